#include "platform/Platform.hpp"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace quill {

namespace {

bool IsPrivateFolder(const std::string& path) {
  struct stat st {};
  if (lstat(path.c_str(), &st) != 0) return false;
  return S_ISDIR(st.st_mode) && st.st_uid == getuid() &&
         (st.st_mode & 077) == 0;
}

}  // namespace

std::string ApplicationFolder() {
  std::error_code ec;
  const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return ".";
  return exe.parent_path().string();
}

std::string PreferencesFolder() {
  std::string folder;
  if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg == '/') {
    folder = xdg;
  } else if (const char* home = std::getenv("HOME"); home && *home) {
    folder = std::string(home) + "/.config";
  } else {
    return {};
  }
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  return std::filesystem::is_directory(folder, ec) ? folder : std::string();
}

std::string TemporaryFolder() {
  if (const char* run = std::getenv("XDG_RUNTIME_DIR");
      run && *run == '/' && IsPrivateFolder(run)) {
    return run;
  }
  const std::string folder = "/tmp/quillmere-" + std::to_string(getuid());
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return {};
  return IsPrivateFolder(folder) ? folder : std::string();
}

std::string ShellQuote(const std::string& path) {
  std::string quoted = "'";
  for (char c : path) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::string ShellExecute(const std::string& command) {
  const std::string full = "( " + command + " ) 2>&1";
  FILE* pipe = popen(full.c_str(), "r");
  if (!pipe) return {};
  std::string output;
  char buffer[65536];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    output.append(buffer, n);
  }
  pclose(pipe);
  return output;
}

}  // namespace quill
