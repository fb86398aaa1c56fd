// Little-endian reading and writing of the scenario file's field types: 16-bit
// integers, IEEE singles and doubles, currency as int64 ten-thousandths, and
// fixed texts stored as Windows-1252 and held as UTF-8 in memory.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/money.h"

namespace ira::file {

static_assert(std::endian::native == std::endian::little, "the file layout is little-endian");

// A stored little-endian value read from, or appended to, raw bytes.
template <typename T>
T Load(const std::uint8_t* p) {
  T value;
  std::memcpy(&value, p, sizeof value);
  return value;
}

template <typename T>
void Store(std::vector<std::uint8_t>& out, T value) {
  std::uint8_t bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  out.insert(out.end(), bytes, bytes + sizeof value);
}

// Title of the notice for a file that is not a readable scenario.
inline constexpr const char* kIncorrectFileTitle = "Incorrect File";

// A file that cannot be read as a scenario: the title and text of the notice
// that tells the user so. Never an error for the error form.
class RefusedFile : public std::runtime_error {
 public:
  RefusedFile(std::string title, const std::string& text) : std::runtime_error(text), m_title(std::move(title)) {}
  const std::string& Title() const noexcept { return m_title; }

 private:
  std::string m_title;
};

class ByteReader {
 public:
  // `name` is the file's name as the user gave it, for the notices.
  ByteReader(std::string name, std::span<const std::uint8_t> data) : m_name(std::move(name)), m_data(data) {}

  const std::string& Name() const { return m_name; }
  std::size_t Remaining() const { return m_data.size() - m_pos; }
  // The bytes not read yet.
  std::span<const std::uint8_t> Rest() const { return m_data.subspan(m_pos); }

  // Refuses the file as incomplete when fewer than `size` bytes are left;
  // `what` names the part that is cut off ("general inputs").
  void Expect(std::size_t size, std::string_view what) const;
  // Refuses the file as damaged; `problem` completes "The file <name> ".
  [[noreturn]] void Refuse(std::string_view problem) const;

  // One stored field into its in-memory form.
  void Field(std::int16_t& value);
  void Field(float& value);
  void Field(double& value);
  void Field(Money& value);
  template <std::size_t N>
  void Field(std::array<std::uint8_t, N>& bytes) {
    const std::uint8_t* p = Take(N);
    for (std::size_t i = 0; i < N; ++i) bytes[i] = p[i];
  }
  // `width` bytes of Windows-1252 as UTF-8 (still `width` characters).
  void Field(std::string& text, std::size_t width);

  // The next `size` bytes, or as many as are left.
  std::string_view Peek(std::size_t size) const;
  void Skip(std::size_t size) { Take(size); }

 private:
  const std::uint8_t* Take(std::size_t size);

  std::string m_name;
  std::span<const std::uint8_t> m_data;
  std::size_t m_pos = 0;
};

class ByteWriter {
 public:
  std::vector<std::uint8_t>& Data() { return m_data; }

  void Field(std::int16_t value);
  void Field(float value);
  void Field(double value);
  void Field(Money value);
  void Field(std::span<const std::uint8_t> bytes) { m_data.insert(m_data.end(), bytes.begin(), bytes.end()); }
  // A UTF-8 text cut or blank-padded to `width` characters, as Windows-1252.
  void Field(std::string_view text, std::size_t width);

 private:
  std::vector<std::uint8_t> m_data;
};

}  // namespace ira::file
