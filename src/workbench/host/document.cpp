#include "workbench/host/document.h"

#include <utility>

namespace tiepoint::workbench {

Document::Document(int number, std::unique_ptr<Drawing> drawing) : documentNumber(number), file(std::move(drawing)) {}

}  // namespace tiepoint::workbench
