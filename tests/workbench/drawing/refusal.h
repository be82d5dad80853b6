// How a drawing refuses to open.
#pragma once

#include <string>

#include "platform/sdk/od_error.h"
#include "workbench/drawing/drawing.h"

struct Refusal {
  OdResult code = eOk;
  std::string text;
};

/// eOk when the drawing opens.
inline Refusal refusalOf(const std::string& path, bool createWhenMissing) {
  try {
    tiepoint::workbench::Drawing::open(path, createWhenMissing);
  } catch (const OdError& error) {
    return {error.code(), error.what()};
  }
  return {};
}

inline bool isOneLine(const std::string& text) { return !text.empty() && text.find('\n') == std::string::npos; }
