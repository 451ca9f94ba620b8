#include "code_page.h"

#include "numeric_text.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <iconv.h>
#endif

namespace qor {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD"; // U+FFFD
// The longest byte sequence tried as one character when a decoding fails.
constexpr std::size_t MaxCharBytes = 4;

bool AllAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool AllAscii8(const char *p)
{
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    return (word & 0x8080808080808080ull) == 0;
}

// The system's converter. Each run is converted whole or not at all:
// nothing when any part of it is invalid or has no exact counterpart.

#ifdef _WIN32

bool Converts(int codePage)
{
    CPINFO info;
    const auto page = static_cast<UINT>(codePage);
    return codePage > 0 && codePage <= 0xFFFF && IsValidCodePage(page) && GetCPInfo(page, &info) &&
           info.MaxCharSize <= 2;
}

UINT Page(int codePage)
{
    const bool valid =
        codePage > 0 && codePage <= 0xFFFF && IsValidCodePage(static_cast<UINT>(codePage));
    return static_cast<UINT>(valid ? codePage : DefaultCodePage);
}

std::optional<std::wstring> Widen(UINT page, std::string_view bytes)
{
    if (bytes.empty() || bytes.size() > INT_MAX / 2) {
        return bytes.empty() ? std::optional<std::wstring>(std::wstring()) : std::nullopt;
    }
    const int size = static_cast<int>(bytes.size());
    const int length =
        MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length <= 0) {
        return std::nullopt;
    }
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), length);
    return wide;
}

// Never a default character: a character without its own bytes fails.
std::optional<std::string> Narrow(UINT page, std::wstring_view wide)
{
    if (wide.empty()) {
        return std::string();
    }
    const int size = static_cast<int>(wide.size());
    const bool utf8 = page == CP_UTF8;
    const DWORD flags = utf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    BOOL usedDefault = FALSE;
    BOOL *used = utf8 ? nullptr : &usedDefault;
    const int length =
        WideCharToMultiByte(page, flags, wide.data(), size, nullptr, 0, nullptr, used);
    if (length <= 0 || usedDefault) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(page, flags, wide.data(), size, bytes.data(), length, nullptr, used);
    return bytes;
}

std::optional<std::string> DecodeRun(std::string_view bytes, int codePage)
{
    const std::optional<std::wstring> wide = Widen(Page(codePage), bytes);
    return wide ? Narrow(CP_UTF8, *wide) : std::nullopt;
}

std::optional<std::string> EncodeRun(std::string_view utf8, int codePage)
{
    const std::optional<std::wstring> wide = Widen(CP_UTF8, utf8);
    return wide ? Narrow(Page(codePage), *wide) : std::nullopt;
}

#else

const iconv_t Closed = reinterpret_cast<iconv_t>(-1);

iconv_t OpenIconv(int codePage, bool decode)
{
    const std::string name = "CP" + std::to_string(codePage);
    return decode ? iconv_open("UTF-8", name.c_str()) : iconv_open(name.c_str(), "UTF-8");
}

bool Converts(int codePage)
{
    for (const bool decode : {true, false}) {
        const iconv_t cd = OpenIconv(codePage, decode);
        if (cd == Closed) {
            return false;
        }
        iconv_close(cd);
    }
    return true;
}

// One direction of one code page, kept open per thread: opening costs more
// than converting a tool name.
class Iconv
{
public:
    explicit Iconv(bool decode) : m_decode(decode) {}
    Iconv(const Iconv &) = delete;
    Iconv &operator=(const Iconv &) = delete;
    ~Iconv() { Close(); }

    // A code page the C library does not know is taken as DefaultCodePage.
    void Use(int codePage)
    {
        if (m_cd != Closed && m_codePage == codePage) {
            return;
        }
        Close();
        m_cd = OpenIconv(codePage, m_decode);
        if (m_cd == Closed) {
            m_cd = OpenIconv(DefaultCodePage, m_decode);
        }
        m_codePage = codePage;
    }

    std::optional<std::string> Run(std::string_view in)
    {
        if (m_cd == Closed) {
            return std::nullopt;
        }
        iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
        std::string out(in.size() * 3 + 8, '\0');
        char *inPtr = const_cast<char *>(in.data());
        std::size_t inLeft = in.size();
        std::size_t done = 0;
        for (;;) {
            char *outPtr = out.data() + done;
            std::size_t outLeft = out.size() - done;
            const std::size_t result = iconv(m_cd, &inPtr, &inLeft, &outPtr, &outLeft);
            done = out.size() - outLeft;
            if (result == static_cast<std::size_t>(-1) && errno == E2BIG) {
                out.resize(out.size() * 2);
                continue;
            }
            // Invalid or cut-short input, or a conversion that was not exact.
            if (result != 0) {
                return std::nullopt;
            }
            break;
        }
        out.resize(done);
        return out;
    }

private:
    void Close()
    {
        if (m_cd != Closed) {
            iconv_close(m_cd);
            m_cd = Closed;
        }
    }

    bool m_decode;
    int m_codePage = 0;
    iconv_t m_cd = Closed;
};

std::optional<std::string> Convert(std::string_view in, int codePage, bool decode)
{
    thread_local Iconv decoder(true);
    thread_local Iconv encoder(false);
    Iconv &converter = decode ? decoder : encoder;
    converter.Use(codePage);
    return converter.Run(in);
}

std::optional<std::string> DecodeRun(std::string_view bytes, int codePage)
{
    return Convert(bytes, codePage, true);
}

std::optional<std::string> EncodeRun(std::string_view utf8, int codePage)
{
    return Convert(utf8, codePage, false);
}

#endif

// The bytes of a run the code page holds exactly: they decode back to it.
// Converters map some characters to a look-alike (glibc writes the yen sign
// as the backslash of 932); those are not held.
std::optional<std::string> HeldRun(std::string_view utf8, int codePage)
{
    std::optional<std::string> bytes = EncodeRun(utf8, codePage);
    if (!bytes) {
        return std::nullopt;
    }
    const std::optional<std::string> back = DecodeRun(*bytes, codePage);
    if (!back || *back != utf8) {
        return std::nullopt;
    }
    return bytes;
}

// Encodes one character at a time. `unheld(out, character)` handles each
// character the code page cannot hold and says whether to go on.
template <typename OnUnheld>
std::string EncodeEach(std::string_view utf8, int codePage, OnUnheld unheld)
{
    std::string out;
    std::size_t i = 0;
    while (i < utf8.size()) {
        const std::size_t length = Utf8SequenceLength(utf8, i);
        if (length == 1) {
            out += utf8[i++];
            continue;
        }
        const std::optional<std::string> bytes =
            length > 0 ? HeldRun(utf8.substr(i, length), codePage) : std::nullopt;
        if (bytes) {
            out += *bytes;
        } else if (!unheld(out, length > 0 ? utf8.substr(i, length) : Replacement)) {
            break;
        }
        i += std::max<std::size_t>(length, 1);
    }
    return out;
}

} // namespace

bool CodePageSupported(int codePage)
{
    if (!Converts(codePage)) {
        return false;
    }
    std::string ascii;
    for (int c = 1; c < 0x80; ++c) {
        ascii += static_cast<char>(c);
    }
    return DecodeRun(ascii, codePage) == ascii && EncodeRun(ascii, codePage) == ascii;
}

int CodePageOfSetting(std::string_view text)
{
    text = TrimSpaces(text);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() ||
        !CodePageSupported(number)) {
        return DefaultCodePage;
    }
    return number;
}

std::string DecodeCodePage(std::string_view bytes, int codePage)
{
    if (AllAscii(bytes)) {
        return std::string(bytes);
    }
    if (std::optional<std::string> whole = DecodeRun(bytes, codePage)) {
        return std::move(*whole);
    }
    // Some bytes are invalid: the shortest run that decodes is a character.
    std::string out;
    std::size_t i = 0;
    while (i < bytes.size()) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80) {
            out += bytes[i++];
            continue;
        }
        std::size_t length = 0;
        for (std::size_t n = 1; n <= MaxCharBytes && n <= bytes.size() - i; ++n) {
            if (std::optional<std::string> character = DecodeRun(bytes.substr(i, n), codePage)) {
                out += *character;
                length = n;
                break;
            }
        }
        if (length == 0) {
            out += Replacement;
            length = 1;
        }
        i += length;
    }
    return out;
}

EncodedText EncodeCodePage(std::string_view utf8, int codePage)
{
    if (AllAscii(utf8)) {
        return {std::string(utf8), {}};
    }
    if (std::optional<std::string> whole = HeldRun(utf8, codePage)) {
        return {std::move(*whole), {}};
    }
    EncodedText encoded;
    encoded.Bytes = EncodeEach(utf8, codePage, [&](std::string &, std::string_view character) {
        encoded.Unheld = character;
        return false;
    });
    return encoded;
}

std::string EncodeCodePageReplacing(std::string_view utf8, int codePage,
                                    std::vector<std::string> *unheld)
{
    if (AllAscii(utf8)) {
        return std::string(utf8);
    }
    if (std::optional<std::string> whole = HeldRun(utf8, codePage)) {
        return std::move(*whole);
    }
    return EncodeEach(utf8, codePage, [&](std::string &out, std::string_view character) {
        out += '?';
        if (unheld != nullptr &&
            std::find(unheld->begin(), unheld->end(), character) == unheld->end()) {
            unheld->emplace_back(character);
        }
        return true;
    });
}

std::size_t Utf8SequenceLength(std::string_view bytes, std::size_t i)
{
    auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
    const unsigned char lead = byte(i);
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
    if (bytes.size() - i < length || byte(i + 1) < low || byte(i + 1) > high) {
        return 0;
    }
    for (std::size_t k = 2; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

bool IsValidUtf8(std::string_view bytes)
{
    std::size_t i = 0;
    while (i < bytes.size()) {
        if (bytes.size() - i >= 8 && AllAscii8(bytes.data() + i)) {
            i += 8;
            continue;
        }
        const std::size_t length = Utf8SequenceLength(bytes, i);
        if (length == 0) {
            return false;
        }
        i += length;
    }
    return true;
}

std::string CodePointName(std::string_view character)
{
    char32_t code = 0xFFFD;
    const std::size_t length = character.empty() ? 0 : Utf8SequenceLength(character, 0);
    if (length > 0) {
        static constexpr unsigned char LeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
        code = static_cast<unsigned char>(character[0]) & LeadBits[length];
        for (std::size_t k = 1; k < length; ++k) {
            code = (code << 6) | (static_cast<unsigned char>(character[k]) & 0x3F);
        }
    }
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(code));
    return name;
}

} // namespace qor
