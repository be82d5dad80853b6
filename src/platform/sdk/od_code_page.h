// Code pages: from narrow bytes to wide text and back.
#pragma once

#include <string>
#include <string_view>

#include "drawing_sdk_export.h"

/// Numbers of the SDK's list of code pages that this project uses.
enum OdCodePageId : int {
  CP_UNDEFINED = 0,
  /// windows-1251, the system code page on every platform: a narrow name means the same everywhere.
  CP_ANSI_1251 = 46
};

/// The wide text of narrow bytes. Every byte has a character of its own (0x98 is U+0098), so that
/// all 256 survive a round trip.
DRAWING_SDK_EXPORT std::wstring odToWide(std::string_view bytes, OdCodePageId codePage = CP_ANSI_1251);

/// The narrow bytes of wide text; a character that the code page lacks becomes '?'.
DRAWING_SDK_EXPORT std::string odToNarrow(std::wstring_view text, OdCodePageId codePage = CP_ANSI_1251);

/// True when every character of the text has a byte in the code page.
DRAWING_SDK_EXPORT bool odHasNarrowForm(std::wstring_view text, OdCodePageId codePage = CP_ANSI_1251);
