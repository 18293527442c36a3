#pragma once

#include <cstddef>
#include <functional>

namespace command {

/// Calls `work` for each number below `count`, on up to `jobs` threads at once, and `progress` on the calling
/// thread with how many are done. What `work` throws ends the work, and is thrown here when all threads have
/// stopped.
void RunJobs(std::size_t count, std::size_t jobs, const std::function<void(std::size_t)>& work,
             const std::function<void(std::size_t)>& progress);

}  // namespace command
