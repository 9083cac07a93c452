// Files.h — how the tool reads its input and writes its output: a whole file
// or standard input read at once, a file written whole or not at all, and
// standard output flushed and checked before the tool answers success.
#pragma once

#include <string>

namespace krmwtarn {

// The whole content of PATH ("-" is standard input). False, with the system's
// reason in `reason`, when the file cannot be opened or read to its end (a
// directory, /proc/self/mem, a file without read permission, ...).
bool readFile(const std::string& path, std::string& text, std::string& reason);

// Writes TEXT as the content of PATH. A regular file (new or existing) is
// written to a temporary file beside it that is renamed over it once complete,
// so a failed write leaves the file as it was and no partial file behind;
// anything else that already exists (a device, a pipe) is written in place.
// False, with the system's reason, when any step fails.
bool writeFile(const std::string& path, const std::string& text, std::string& reason);

// A command's result TEXT into FILE by writeFile, or printed when FILE is "-":
// the exit status, after `krmwtarn COMMAND: cannot write FILE: REASON` on
// standard error when the file could not be written (main checks standard output).
int writeResult(const char* command, const std::string& file, const std::string& text);

// Writes TEXT (a whole document) to standard output, after whatever is
// buffered there; a failure and its reason are kept for flushStandardOutput.
void printText(const std::string& text);

// Flushes standard output (C and C++ streams); false, with the reason, when
// anything written to it was lost (a full disk, /dev/full, a closed descriptor).
bool flushStandardOutput(std::string& reason);

}  // namespace krmwtarn
