// The folders the program finds through the environment, and the shell.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "platform/Platform.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

namespace fs = std::filesystem;

// Sets or unsets one variable for the life of the object.
class Variable {
 public:
  Variable(const char* name, const std::optional<std::string>& value)
      : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    Set(value);
  }
  ~Variable() { Set(old_); }

 private:
  void Set(const std::optional<std::string>& value) {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  const char* name_;
  std::optional<std::string> old_;
};

class PlatformTest : public TempFolderTest {
 protected:
  // A folder with `mode`, made here.
  std::string Folder(const std::string& name, mode_t mode) const {
    fs::create_directory(Path(name));
    chmod(Path(name).c_str(), mode);
    return Path(name);
  }
};

TEST_F(PlatformTest, PreferencesFolderIsXdgConfigHomeOrHomeConfig) {
  struct Case {
    const char* name;
    std::optional<std::string> xdg;
    std::optional<std::string> home;
    std::string expected;
  };
  const Case cases[] = {
      {"absolute XDG", Path("xdg"), Path("home"), Path("xdg")},
      {"relative XDG", "xdg", Path("home"), Path("home") + "/.config"},
      {"empty XDG", "", Path("home"), Path("home") + "/.config"},
      {"no XDG", std::nullopt, Path("home"), Path("home") + "/.config"},
      {"no XDG, no HOME", std::nullopt, std::nullopt, ""},
      {"no XDG, empty HOME", std::nullopt, "", ""},
      {"XDG below a file", Path("file") + "/sub", Path("home"), ""},
  };
  std::ofstream(Path("file")) << "x";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const Variable xdg("XDG_CONFIG_HOME", c.xdg);
    const Variable home("HOME", c.home);
    EXPECT_EQ(PreferencesFolder(), c.expected);
    // The folder given is there, made if need be.
    if (!c.expected.empty()) {
      EXPECT_TRUE(fs::is_directory(c.expected));
    }
  }
}

TEST_F(PlatformTest, TemporaryFolderIsAPrivateFolderOfThisUser) {
  const std::string fallback = "/tmp/quillmere-" + std::to_string(getuid());
  const std::string run = Folder("run", 0700);
  const std::string other = Folder("other", 0700);
  const bool otherIsSomeoneElses =
      getuid() == 0 && chown(other.c_str(), 12345, 12345) == 0;
  std::ofstream(Path("file")) << "x";
  chmod(Path("file").c_str(), 0600);
  struct Case {
    const char* name;
    std::optional<std::string> xdg;
    std::string expected;
  };
  const Case cases[] = {
      {"private", run, run},
      {"open to the group", Folder("group", 0750), fallback},
      {"open to all", Folder("all", 0707), fallback},
      {"relative", fs::relative(run).string(), fallback},
      {"a file", Path("file"), fallback},
      {"missing", Path("missing"), fallback},
      {"empty", "", fallback},
      {"unset", std::nullopt, fallback},
      {"unset again, the folder there now", std::nullopt, fallback},
      {"someone else's", other, otherIsSomeoneElses ? fallback : other},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const Variable xdg("XDG_RUNTIME_DIR", c.xdg);
    EXPECT_EQ(TemporaryFolder(), c.expected);
  }
  struct stat st {};
  ASSERT_EQ(lstat(fallback.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);
}

TEST_F(PlatformTest, ApplicationFolderHoldsTheRunningProgram) {
  const std::string folder = ApplicationFolder();
  ASSERT_FALSE(folder.empty());
  EXPECT_EQ(folder[0], '/');
  EXPECT_TRUE(fs::exists(folder + "/quillmere_tests"));
}

TEST_F(PlatformTest, ShellQuoteKeepsEveryCharacterFromTheShell) {
  const std::string path = Path("a 'b' $HOME `c` \"d\"; e");
  EXPECT_EQ(ShellQuote("a'b c"), "'a'\\''b c'");
  std::ofstream(path) << "inside";
  EXPECT_EQ(ShellExecute("cat " + ShellQuote(path)), "inside");
  EXPECT_EQ(ShellExecute("echo out; echo err >&2"), "out\nerr\n");
  // The pipe is closed again: no descriptor stays open.
  const auto descriptors = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"),
                         fs::directory_iterator());
  };
  const auto before = descriptors();
  ShellExecute("true");
  EXPECT_EQ(descriptors(), before);
}

}  // namespace
}  // namespace quill
