#pragma once

#include "result.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace qor {

// Paths are UTF-8 everywhere inside the program. Where a path meets the
// system these turn it into the system's own form: UTF-16 and the wide calls
// on Windows, the bytes as they are elsewhere. Every file the core opens goes
// through them, so that a folder such as "C:\Users\Jürgen\" works on Windows
// whatever the ANSI code page.

std::filesystem::path NativePath(std::string_view utf8Path);

// The UTF-8 text of a path the system handed over.
std::string Utf8Path(const std::filesystem::path &path);

// Opens an existing file for reading ("rb") or a file for writing ("wb");
// nullptr with errno set on failure.
std::FILE *OpenFile(const std::string &utf8Path, const char *mode);

// Opens a file for reading ("rb") when it is a regular file. A folder, a pipe
// or a device is refused at once, with a sentence that says what it is,
// without waiting on it as opening a pipe would.
Result<std::FILE *> OpenRegularFile(const std::string &utf8Path);

// Creates a file that must not exist yet and opens it for writing. Fails with
// errno EEXIST when something is already there, on every system (the C
// runtime on Windows ignores fopen's "x").
std::FILE *CreateNewFile(const std::string &utf8Path);

// `path` with the system's separators: "\" on Windows, "/" elsewhere.
std::string NativeSeparators(std::string path);

} // namespace qor
