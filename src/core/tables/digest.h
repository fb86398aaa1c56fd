// The SHA-256 of a table file's bytes as lower-case hex: what the table
// generator writes into the manifest and what the program checks on loading.
#pragma once

#include <nettle/sha2.h>

#include <cstdint>
#include <span>
#include <string>

namespace ira::tables {

inline std::string Sha256Hex(std::span<const std::uint8_t> bytes) {
  sha256_ctx ctx;
  sha256_init(&ctx);
  sha256_update(&ctx, bytes.size(), bytes.data());
  std::uint8_t digest[SHA256_DIGEST_SIZE];
  sha256_digest(&ctx, sizeof digest, digest);
  static constexpr char kHex[] = "0123456789abcdef";
  std::string hex;
  for (std::uint8_t b : digest) {
    hex += kHex[b >> 4];
    hex += kHex[b & 15];
  }
  return hex;
}

}  // namespace ira::tables
