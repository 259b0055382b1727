// The few services of the operating system that the core needs.
#pragma once

#include <string>

namespace quill {

// Folder of the running executable (through /proc/self/exe, links resolved),
// without a trailing slash. Data files and Tokenizer sit here.
std::string ApplicationFolder();

// The per-user preferences folder: $XDG_CONFIG_HOME, else ~/.config, made
// if missing. Empty when there is none and none can be made.
std::string PreferencesFolder();

// A folder for temporary files that only this user can use: $XDG_RUNTIME_DIR,
// else /tmp/quillmere-UID, made with mode 0700. A folder that exists but
// belongs to someone else or is open to others is refused. Empty when none
// can be had.
std::string TemporaryFolder();

// Runs `command` with /bin/sh -c, waits for it and returns what it printed on
// standard output and standard error.
std::string ShellExecute(const std::string& command);

// `path` in single quotes for /bin/sh, so that no character of it acts on
// the shell.
std::string ShellQuote(const std::string& path);

}  // namespace quill
