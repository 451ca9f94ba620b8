#include "temp_dir.h"

#include "native_file.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace qor::test {

namespace fs = std::filesystem;

TempDir::TempDir()
{
    static std::atomic<unsigned> counter{0};
    std::random_device random;
    fs::path folder = fs::temp_directory_path() / ("qortool-test-" + std::to_string(random()) +
                                                   "-" + std::to_string(counter++));
    fs::create_directories(folder);
    m_path = Utf8Path(folder) + static_cast<char>(fs::path::preferred_separator);
}

TempDir::~TempDir()
{
    std::error_code ec;
    // Tests may leave read-only folders behind; open them up before removing.
    const fs::path folder = NativePath(m_path);
    for (auto &entry : fs::recursive_directory_iterator(folder, ec)) {
        fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ec);
    }
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(folder, ec);
}

void TempDir::write(std::string_view name, std::string_view bytes) const
{
    std::ofstream out(NativePath(file(name)), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string TempDir::read(std::string_view name) const
{
    std::ifstream in(NativePath(file(name)), std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

ScratchStream::ScratchStream() : m_file(std::fopen(m_folder.file("scratch").c_str(), "w+b")) {}

ScratchStream::~ScratchStream()
{
    if (m_file) {
        std::fclose(m_file);
    }
}

std::FILE *ScratchStream::hold(std::string_view bytes)
{
    if (!m_file) {
        return nullptr;
    }
    std::rewind(m_file);
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size() ||
        std::fflush(m_file) != 0) {
        return nullptr;
    }
#ifdef _WIN32
    const bool cut = _chsize_s(_fileno(m_file), static_cast<long long>(bytes.size())) == 0;
#else
    const bool cut = ftruncate(fileno(m_file), static_cast<off_t>(bytes.size())) == 0;
#endif
    std::rewind(m_file);
    return cut ? m_file : nullptr;
}

std::string SourceFile(std::string_view relativePath)
{
    std::ifstream in(std::string(QOR_SOURCE_DIR) + "/" + std::string(relativePath),
                     std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

} // namespace qor::test
