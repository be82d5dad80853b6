// Bytes for the reader.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "workbench/reading/read_survey.h"

namespace tiepoint::testing {

/// Gives the bytes in pieces of that size, so that every boundary falls somewhere.
inline workbench::ByteSource bytesInPieces(const std::string& bytes, std::size_t piece = 1u << 16) {
  return [bytes, piece, at = std::size_t{0}](char* into, std::size_t size) mutable {
    const std::size_t count = std::min({size, piece, bytes.size() - at});
    std::memcpy(into, bytes.data() + at, count);
    at += count;
    return count;
  };
}

inline workbench::ReadSurvey readBytes(const std::string& bytes, const workbench::ReadingRequest& request = {}) {
  return workbench::readSurvey(bytesInPieces(bytes), request);
}

/// ASCII text as UTF-16.
inline std::string wideBytes(const std::string& ascii, bool bigEndian = false) {
  std::string bytes;
  for (const char c : ascii) bytes += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  return bytes;
}

}  // namespace tiepoint::testing
