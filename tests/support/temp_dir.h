#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace qor::test {

// A fresh folder under the system's temporary folder, removed with its
// contents when the object goes.
class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    // The folder, ending in the path separator.
    const std::string &path() const { return m_path; }
    std::string file(std::string_view name) const { return m_path + std::string(name); }

    void write(std::string_view name, std::string_view bytes) const;
    std::string read(std::string_view name) const;

private:
    std::string m_path;
};

// One open file in a folder of its own whose content is replaced again and
// again, for tests that feed thousands of texts to code that reads a stream.
// Reusing one handle neither waits for the disk nor shares names with other
// test processes, as std::tmpfile does on Windows.
class ScratchStream
{
public:
    ScratchStream();
    ~ScratchStream();
    ScratchStream(const ScratchStream &) = delete;
    ScratchStream &operator=(const ScratchStream &) = delete;

    // The stream holding exactly these bytes, positioned at its start;
    // nullptr when the file could not be rewritten.
    std::FILE *hold(std::string_view bytes);

private:
    TempDir m_folder;
    std::FILE *m_file = nullptr;
};

// The bytes of a file in the source tree (relative to its root).
std::string SourceFile(std::string_view relativePath);

} // namespace qor::test
