#pragma once

#include "fom/console.h"
#include "fom/heap_gauge.h"

namespace command {

/// The whole command: reads the command line and does what it asks for, with the library started meanwhile.
/// Returns the exit code. Without a gauge the report says nothing of the heap.
int Run(int argc, const char* const* argv, Console& console, HeapGauge gauge = nullptr);

}  // namespace command
