#include "workbench/report/line_fault_text.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

/// The layout that the line would have.
std::string proposal(const LineFault& fault) {
  if (!fault.readsAs) return {};
  const LayoutInfo& other = layoutInfo(*fault.readsAs);
  return fmt::format("; it reads as {} ({})", other.name, other.fields);
}

std::string fieldCountText(const LineFault& fault) {
  const LayoutInfo& layout = layoutInfo(fault.layout);
  const bool isComma = fault.kind == LineFaultKind::decimalComma;
  return fmt::format("has {} where {} has {} ({}){}", plural(fault.fields, "field"), layout.name, layout.fieldCount,
                     layout.fields, isComma ? "; numbers take a decimal point, not a comma" : proposal(fault));
}

}  // namespace

std::string lineFaultText(const LineFault& fault) {
  const LayoutInfo& layout = layoutInfo(fault.layout);
  const std::string found = printable(fault.found);
  switch (fault.kind) {
    case LineFaultKind::utf16:
      return "is UTF-16 text; save the file as plain (ANSI) text";
    case LineFaultKind::zeroByte:
      return "holds a zero byte, so the file isn't plain text";
    case LineFaultKind::blank:
      return "is blank; take it out";
    case LineFaultKind::byteOrderMark:
      return "begins with a byte-order mark; save the file without it";
    case LineFaultKind::leadingMark:
      return fmt::format("begins with \"{}\"; a field must come first", found);
    case LineFaultKind::trailingMark:
      return fmt::format("ends with \"{}\"; take it off the end of the lines", found);
    case LineFaultKind::comment:
      return "begins with \"#\", but these files know no comments; take it out";
    case LineFaultKind::fieldCount:
    case LineFaultKind::decimalComma:
      return fieldCountText(fault);
    case LineFaultKind::notANumber:
      return fmt::format("holds \"{}\", which isn't a number{}", found, proposal(fault));
    case LineFaultKind::header:
      return fmt::format("holds \"{}\", which isn't a number; these files have no header, take it out", found);
    case LineFaultKind::other:
      break;
  }
  return fmt::format("can't be read as {} ({})", layout.name, layout.fields);
}

}  // namespace tiepoint::workbench
