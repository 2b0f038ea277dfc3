#pragma once

#include "support/faults/faults.h"

namespace ulk_test {

/// The scope on this thread; null when there is none.
faults_t* active_faults();

/// Counts an operation of this thread; whether it is to fail.
bool is_to_fail(fallible_t operation);

}  // namespace ulk_test
