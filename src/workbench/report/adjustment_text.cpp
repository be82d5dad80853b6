#include "workbench/report/adjustment_text.h"

#include "workbench/report/adjustment_advice.h"
#include "workbench/report/adjustment_verdict.h"
#include "workbench/report/asked_tables.h"
#include "workbench/report/look_list.h"
#include "workbench/report/station_table.h"

namespace tiepoint::workbench {

std::string adjustmentText(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  std::string text = verdictText(registration, lengths) + "\n" + stationTable(registration, lengths, options);
  for (const std::string& part : {lookTable(registration, lengths, options), adviceText(registration),
                                  carriedTable(registration, lengths), traceTables(registration, lengths, options)}) {
    if (!part.empty()) text += "\n" + part;
  }
  return text;
}

}  // namespace tiepoint::workbench
