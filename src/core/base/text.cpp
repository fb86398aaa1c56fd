#include "core/base/text.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace ira {
namespace {

// Windows-1252 0x80..0x9F; 0 marks the five undefined bytes, kept as U+0080+n.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Decodes one code point; malformed bytes decode as U+FFFD, one byte at a time.
char32_t NextCodePoint(std::string_view s, std::size_t& i) {
  const auto b = static_cast<unsigned char>(s[i]);
  std::size_t len = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
  if (len == 0 || i + len > s.size()) {
    ++i;
    return 0xFFFD;
  }
  char32_t c = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
  for (std::size_t k = 1; k < len; ++k) {
    const auto cb = static_cast<unsigned char>(s[i + k]);
    if ((cb & 0xC0) != 0x80) {
      ++i;
      return 0xFFFD;
    }
    c = (c << 6) | (cb & 0x3F);
  }
  i += len;
  return c;
}

}  // namespace

std::string Utf8ToCp1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const char32_t c = NextCodePoint(utf8, i);
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
      out += static_cast<char>(c);
      continue;
    }
    char mapped = '?';
    for (std::size_t k = 0; k < kHigh.size(); ++k) {
      if ((kHigh[k] != 0 && kHigh[k] == c) || (kHigh[k] == 0 && c == 0x80 + k)) {
        mapped = static_cast<char>(0x80 + k);
        break;
      }
    }
    out += mapped;
  }
  return out;
}

std::string Cp1252ToUtf8(std::string_view cp1252) {
  std::string out;
  out.reserve(cp1252.size());
  for (char ch : cp1252) {
    const auto b = static_cast<unsigned char>(ch);
    if (b >= 0x80 && b < 0xA0) {
      const char32_t c = kHigh[b - 0x80];
      AppendUtf8(out, c != 0 ? c : static_cast<char32_t>(b));
    } else {
      AppendUtf8(out, b);
    }
  }
  return out;
}

std::size_t CharCount(std::string_view utf8) {
  std::size_t n = 0;
  for (std::size_t i = 0; i < utf8.size(); ++n) NextCodePoint(utf8, i);
  return n;
}

std::string FixedText(std::string_view utf8, std::size_t width) {
  std::string out;
  std::size_t n = 0;
  for (std::size_t i = 0; i < utf8.size() && n < width; ++n) {
    const std::size_t start = i;
    NextCodePoint(utf8, i);
    out.append(utf8.substr(start, i - start));
  }
  out.append(width - n, ' ');
  return out;
}

std::string RTrim(std::string_view s) {
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return std::string(s);
}

std::string LTrim(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  return std::string(s);
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

std::string ToLower(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

std::string NumberText(float value) {
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, value);
  return std::string(buf, res.ptr);
}

std::string NumberText(double value) {
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, value);
  return std::string(buf, res.ptr);
}

std::string PadLeft(std::string_view s, std::size_t width) {
  const std::size_t n = CharCount(s);
  return n >= width ? std::string(s) : std::string(width - n, ' ') + std::string(s);
}

std::string PadRight(std::string_view s, std::size_t width) {
  const std::size_t n = CharCount(s);
  return n >= width ? std::string(s) : std::string(s) + std::string(width - n, ' ');
}

}  // namespace ira
