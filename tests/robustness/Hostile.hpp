// Helpers for the hostile-input tests: random bytes, and quillmere-cli as a
// real process.
#pragma once

#include <sys/wait.h>
#if __has_include(<valgrind/valgrind.h>)
#include <valgrind/valgrind.h>
#endif

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace quill::hostile {

// The sanitizer build and valgrind run every test many times slower; the
// biggest inputs shrink there so that the suite still ends in good time.
inline bool Shrunk() {
#if defined(__SANITIZE_ADDRESS__)
  return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
  return true;
#endif
#endif
#if __has_include(<valgrind/valgrind.h>)
  return RUNNING_ON_VALGRIND != 0;
#else
  return false;
#endif
}

// `size` bytes from a fixed seed, so that a failure can be repeated.
inline std::string RandomBytes(std::size_t size, std::uint64_t seed) {
  std::mt19937_64 generator(seed);
  std::string bytes(size, '\0');
  std::size_t i = 0;
  while (i < size) {
    std::uint64_t word = generator();
    for (int k = 0; k < 8 && i < size; ++k, word >>= 8) {
      bytes[i++] = static_cast<char>(word & 0xFF);
    }
  }
  return bytes;
}

struct CliRun {
  int status = -1;  // exit status; -1 when the process died of a signal
  std::string out;
};

// Runs quillmere-cli through the shell with `args` (already quoted);
// standard error joins standard output.
inline CliRun RunCli(const std::string& args) {
  const std::string command = std::string("'") + QUILLMERE_OUT_DIR +
                              "/quillmere-cli' " + args + " 2>&1";
  CliRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  char buffer[65536];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    run.out.append(buffer, n);
  }
  const int status = pclose(pipe);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

}  // namespace quill::hostile
