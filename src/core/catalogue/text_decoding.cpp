#include "text_decoding.h"

#include <cstdint>
#include <cstring>

namespace qor {

namespace {

constexpr std::string_view Utf8Bom = "\xEF\xBB\xBF";

// Length of the well-formed UTF-8 sequence starting at `i`, 0 when malformed.
std::size_t SequenceLength(std::string_view bytes, std::size_t i)
{
    auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
    unsigned char lead = byte(i);
    if (lead < 0x80) {
        return 1;
    }
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0) {
            low = 0xA0; // overlong below U+0800
        } else if (lead == 0xED) {
            high = 0x9F; // surrogates
        }
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0) {
            low = 0x90; // overlong below U+10000
        } else if (lead == 0xF4) {
            high = 0x8F; // above U+10FFFF
        }
    } else {
        return 0;
    }
    if (bytes.size() - i < length) {
        return 0;
    }
    if (byte(i + 1) < low || byte(i + 1) > high) {
        return 0;
    }
    for (std::size_t k = 2; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

bool AllAscii8(const char *p)
{
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    return (word & 0x8080808080808080ull) == 0;
}

void AppendUtf8(std::string &out, char32_t code)
{
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// Windows-1252 0x80..0x9F; the rest of the upper half is Latin-1.
constexpr char32_t Cp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

std::string Utf8WithReplacement(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    std::size_t i = 0;
    while (i < bytes.size()) {
        std::size_t length = SequenceLength(bytes, i);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            ++i;
        } else {
            out.append(bytes.substr(i, length));
            i += length;
        }
    }
    return out;
}

} // namespace

bool IsValidUtf8(std::string_view bytes)
{
    std::size_t i = 0;
    while (i < bytes.size()) {
        if (bytes.size() - i >= 8 && AllAscii8(bytes.data() + i)) {
            i += 8;
            continue;
        }
        std::size_t length = SequenceLength(bytes, i);
        if (length == 0) {
            return false;
        }
        i += length;
    }
    return true;
}

std::string Windows1252ToUtf8(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 4);
    for (char c : bytes) {
        auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out += c;
        } else if (byte < 0xA0) {
            AppendUtf8(out, Cp1252High[byte - 0x80]);
        } else {
            AppendUtf8(out, byte);
        }
    }
    return out;
}

std::string DecodeTextFile(std::string_view bytes)
{
    bool bom = bytes.starts_with(Utf8Bom);
    if (bom) {
        bytes.remove_prefix(Utf8Bom.size());
    }
    if (IsValidUtf8(bytes)) {
        return std::string(bytes);
    }
    // A BOM says the file is meant as UTF-8: one damaged character should not
    // turn every other one into mojibake.
    return bom ? Utf8WithReplacement(bytes) : Windows1252ToUtf8(bytes);
}

} // namespace qor
