#include "core/scenario/byte_stream.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/base/text.h"

namespace ira::file {

void ByteReader::Expect(std::size_t size, std::string_view what) const {
  if (Remaining() < size) Refuse("is incomplete: it ends inside its " + std::string(what) + ".");
}

void ByteReader::Refuse(std::string_view problem) const {
  throw RefusedFile(kIncorrectFileTitle, "The file " + m_name + " " + std::string(problem));
}

const std::uint8_t* ByteReader::Take(std::size_t size) {
  Expect(size, "data");
  const std::uint8_t* p = m_data.data() + m_pos;
  m_pos += size;
  return p;
}

std::string_view ByteReader::Peek(std::size_t size) const {
  const std::size_t n = std::min(size, Remaining());
  return {reinterpret_cast<const char*>(m_data.data() + m_pos), n};
}

void ByteReader::Field(std::int16_t& value) { value = Load<std::int16_t>(Take(2)); }
void ByteReader::Field(float& value) { value = Load<float>(Take(4)); }
void ByteReader::Field(double& value) { value = Load<double>(Take(8)); }
void ByteReader::Field(Money& value) { value = Money::FromRaw(Load<std::int64_t>(Take(8))); }

void ByteReader::Field(std::string& text, std::size_t width) {
  const std::uint8_t* p = Take(width);
  text = Cp1252ToUtf8(std::string_view(reinterpret_cast<const char*>(p), width));
}

void ByteWriter::Field(std::int16_t value) { Store(m_data, value); }
void ByteWriter::Field(float value) { Store(m_data, value); }
void ByteWriter::Field(double value) { Store(m_data, value); }
void ByteWriter::Field(Money value) { Store(m_data, value.Raw()); }

void ByteWriter::Field(std::string_view text, std::size_t width) {
  std::string bytes = Utf8ToCp1252(FixedText(text, width));
  bytes.resize(width, ' ');  // one byte per character, but never trust a width to a conversion
  m_data.insert(m_data.end(), bytes.begin(), bytes.end());
}

}  // namespace ira::file
