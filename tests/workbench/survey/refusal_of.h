// What a call refuses, as a value.
#pragma once

#include <gtest/gtest.h>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

/// The refusal that `action` throws; a failure of the test when it throws none.
template <class Action>
Refusal refusalOf(Action action) {
  try {
    action();
  } catch (const Refused& refused) {
    return refused.refusal();
  }
  ADD_FAILURE() << "nothing was refused";
  return {};
}

}  // namespace tiepoint::workbench
