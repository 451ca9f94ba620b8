#pragma once

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

// The bytes of a file in the source tree (relative to its root).
std::string SourceFile(std::string_view relativePath);

} // namespace qor::test
