// The module's string table.
#pragma once

namespace ZOR::reg {

/// The text under that number, to the letter; an empty text for a number that the table lacks.
const wchar_t* resourceString(int number);

}  // namespace ZOR::reg
