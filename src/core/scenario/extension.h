// The extension block after the last IRA record: "TLYEXT", a version, the
// byte count of its chunks, then chunks of a 4-byte id, an int32 length and
// the payload. "RULE" holds the rule set and the 1959 applicable age, "BENE"
// the beneficiary details of every IRA in list order; chunks of other ids are
// kept and written back after those. Older readers skip the block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/scenario/byte_stream.h"
#include "core/scenario/records.h"
#include "core/scenario/scenario.h"

namespace ira::file {

inline constexpr std::size_t kExtensionHeaderSize = 12;  // "TLYEXT", int16 version, int32 N
inline constexpr std::size_t kChunkHeaderSize = 8;       // id, int32 L
inline constexpr std::size_t kBeneEntrySize = 8;

// The most of a block the program reads: the known chunks at their largest
// (32767 IRAs) and a mebibyte for chunks of later versions. A block that
// claims more is damaged, as if it ran past the end of the file.
inline constexpr std::size_t kMaxExtensionSize =
    kExtensionHeaderSize + (kChunkHeaderSize + 4) + (kChunkHeaderSize + kBeneEntrySize * 32767) + (1u << 20);

// The most of a file the program reads: the largest records and the block.
inline constexpr std::size_t kMaxFileSize =
    kHeaderSize + kGeneralRecordSize + 32767 * kIraRecordSize + kMaxExtensionSize;

// Appends the block when the scenario needs one (see extension.cpp for which
// chunks are written); a scenario whose additions hold their defaults gets
// none, so its file is byte for byte the described layout.
void WriteExtension(ByteWriter& out, const Scenario& scenario);

// Reads the block at the start of `rest` (the bytes after the IRA records)
// into `scenario`, whose additions must hold their defaults. Bytes that do
// not begin with "TLYEXT" are ignored. Returns false when the block is
// damaged: what could be read is kept, the rest keeps its defaults.
bool ReadExtension(std::span<const std::uint8_t> rest, Scenario& scenario);

}  // namespace ira::file
