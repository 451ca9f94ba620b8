#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qor {

// Windows code pages: the encodings of tool list files (1252 in Western
// Europe, 932 Shift-JIS in Japan). Every conversion goes through the
// system's own converter: MultiByteToWideChar / WideCharToMultiByte on
// Windows, iconv of the C library (as "CP<n>") elsewhere.

inline constexpr int DefaultCodePage = 1252;

// True when this system converts code page `codePage` and the code page
// keeps every ASCII byte as it is, with characters of one or two bytes
// (1252, 932, 936 ...; not EBCDIC, not UTF-8).
bool CodePageSupported(int codePage);

// The code page a "Code Page" setting names: its number, blanks around it
// allowed. DefaultCodePage when the text is no number or names a code page
// that is not supported.
int CodePageOfSetting(std::string_view text);

// The bytes as UTF-8. A byte the code page does not define, alone or as the
// start of a character, becomes U+FFFD. `codePage` should be supported; one
// the system does not know at all is taken as DefaultCodePage.
std::string DecodeCodePage(std::string_view bytes, int codePage);

// UTF-8 text in a code page.
struct EncodedText
{
    std::string Bytes;  // complete only when Unheld is empty
    std::string Unheld; // the first character the code page cannot hold, "" when none
};

// The text in the code page, or the first character it cannot hold. A
// character counts as held only when its bytes decode back to it, so nothing
// is ever replaced by "?" or a look-alike (the yen sign is not the backslash
// of 932). A malformed UTF-8 sequence is not held; it is named as U+FFFD.
EncodedText EncodeCodePage(std::string_view utf8, int codePage);

// Like EncodeCodePage, but each character the code page cannot hold becomes
// "?", for text that is only a comment. When `unheld` is given, those
// characters are added to it, each once, in the order of the text.
std::string EncodeCodePageReplacing(std::string_view utf8, int codePage,
                                    std::vector<std::string> *unheld = nullptr);

// True when the bytes are well-formed UTF-8 (no overlong forms, no
// surrogates, nothing above U+10FFFF).
bool IsValidUtf8(std::string_view bytes);

// The length of the well-formed UTF-8 sequence that starts at `i`, 0 when
// it is malformed or cut short.
std::size_t Utf8SequenceLength(std::string_view bytes, std::size_t i);

// "U+5DE5": the code point of a UTF-8 character, for naming it in messages
// ("U+FFFD" for anything malformed).
std::string CodePointName(std::string_view character);

} // namespace qor
