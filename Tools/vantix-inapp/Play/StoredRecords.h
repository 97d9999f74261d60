#pragma once

#include "Platform/Values/Value.h"

#include <functional>

namespace vantix {

/// Reads the stored messages of all customers, in store order, every column by its name. The completion runs on the
/// store thread; it gets the reason instead when the store cannot be read.
void readStoredRecords(std::function<void(Value)> completion);

}  // namespace vantix
