// The string operations every part of Quillmere is written in.
//
// All text is UTF-8 in a std::string. Positions are 1-based. The character
// forms (Len, Mid, Left, Right, InStr, Asc) count characters; the byte forms
// (LenB, MidB, InStrB, AscB) count bytes and compare bytes exactly.
//
// What a character is: a well-formed UTF-8 sequence (shortest form, no
// surrogate, at most U+10FFFF) is one character. Every byte that does not
// begin such a sequence is a character of its own, whose code (Asc) is the
// byte's value. So invalid input is never lost and never stops a loop:
//   Len("a\xFF中") == 3, Asc("\xFF") == 255.
//
// Letter case: InStr, Replace, ReplaceAll and Equals ignore the case of the
// ASCII letters and of nothing else, so accents count: "ü" is not "u".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quill {

// One decoded character: its code and the number of bytes it takes.
struct Utf8Char {
  std::uint32_t code;
  std::size_t length;
};

// Decodes the character that starts at byte `pos` of `s` (pos < s.size()).
// Inline: the character loops of the look-up and the export call it for
// every character of the text.
inline Utf8Char DecodeChar(std::string_view s, std::size_t pos) {
  const auto b0 = static_cast<unsigned char>(s[pos]);
  if (b0 < 0x80) return {b0, 1};
  if (b0 >= 0xE0 && b0 <= 0xEF && pos + 2 < s.size()) {
    // Three bytes, as every character of the Basic Multilingual Plane
    // above U+07FF (all of common Chinese) takes: without the loop below.
    const auto b1 = static_cast<unsigned char>(s[pos + 1]);
    const auto b2 = static_cast<unsigned char>(s[pos + 2]);
    if ((b1 & 0xC0) != 0x80 || (b2 & 0xC0) != 0x80) return {b0, 1};
    const std::uint32_t code =
        ((b0 & 0x0Fu) << 12) | ((b1 & 0x3Fu) << 6) | (b2 & 0x3Fu);
    if (code < 0x800 || (code >= 0xD800 && code <= 0xDFFF)) return {b0, 1};
    return {code, 3};
  }
  std::size_t need;
  std::uint32_t code;
  std::uint32_t minimum;
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    need = 1, code = b0 & 0x1F, minimum = 0x80;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    need = 2, code = b0 & 0x0F, minimum = 0x800;
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    need = 3, code = b0 & 0x07, minimum = 0x10000;
  } else {
    return {b0, 1};
  }
  if (pos + need >= s.size()) return {b0, 1};
  for (std::size_t i = 1; i <= need; ++i) {
    const auto b = static_cast<unsigned char>(s[pos + i]);
    if ((b & 0xC0) != 0x80) return {b0, 1};
    code = (code << 6) | (b & 0x3F);
  }
  if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
    return {b0, 1};
  }
  return {code, need + 1};
}

// The UTF-8 of a code point; an invalid code point gives the empty string.
std::string Chr(std::uint32_t code);

// Code of the first character; 0 for the empty string.
std::uint32_t Asc(std::string_view s);
// Value of the first byte; 0 for the empty string.
int AscB(std::string_view s);

std::size_t Len(std::string_view s);
std::size_t LenB(std::string_view s);

// `length` < 0 means "to the end". A start below 1 counts from 1.
std::string Mid(std::string_view s, long start, long length = -1);
std::string MidB(std::string_view s, long start, long length = -1);
std::string Left(std::string_view s, long count);
std::string Right(std::string_view s, long count);

// Byte position (1-based) of `find` in `s` from byte `start`; start 0 or 1
// searches from the first byte. 0 when there is no hit or `find` is empty.
long InStrB(long start, std::string_view s, std::string_view find);
// Character position (1-based) of `find` in `s`, letter case ignored; 0 when
// there is no hit or `find` is empty.
long InStr(std::string_view s, std::string_view find);

// The `=` of the program: whole strings, ASCII letter case ignored.
bool Equals(std::string_view a, std::string_view b);

// True for the characters Trim takes away: blank, tab, CR, LF, VT, FF.
inline bool IsTrimmable(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' ||
         c == '\f';
}
// White space and line ends off both ends.
std::string Trim(std::string_view s);
// The same, as a view into `s`.
std::string_view TrimView(std::string_view s);
// In place; cheap when nothing is to be taken away.
void TrimInPlace(std::string& s);

// First occurrence only / every occurrence, letter case ignored. An empty
// `find` changes nothing.
std::string Replace(std::string_view s, std::string_view find,
                    std::string_view with);
std::string ReplaceAll(std::string_view s, std::string_view find,
                       std::string_view with);
// Reserves room for `size` bytes in a text that is then written once from
// start to end, such as a result of megabytes. Where the system grants huge
// pages only on request (Linux with transparent huge pages on "madvise"), a
// big text asks for them: the first touches of small pages can otherwise cost
// more than all the writing.
void ReserveForWriting(std::string& s, std::size_t size);
// Maps the pages of `bytes` bytes from `data` in one call, before they are
// written: where huge pages are not granted, a fault on every small page
// costs more than the writing.
void MapForWriting(void* data, std::size_t bytes);
// The same for the room of `s` from its end up to byte `upTo` (within its
// capacity).
void MapAhead(std::string& s, std::size_t upTo);

// ReplaceAll on `s` itself, with the same result; no copy of the text when
// `with` is no longer than `find`.
void ReplaceAllInPlace(std::string& s, std::string_view find,
                       std::string_view with);

// Fields between separators: CountFields is the number of separators plus 1
// (so 1 for the empty string); NthField is empty past the last field.
long CountFields(std::string_view s, std::string_view separator);
std::string NthField(std::string_view s, std::string_view separator, long n);

// The number at the head of the text (leading blanks skipped), 0 if none.
double Val(std::string_view s);
// Decimal text of a number.
std::string Str(long long n);

// True when every byte of `s` belongs to a well-formed character.
bool IsValidUtf8(std::string_view s);

}  // namespace quill
