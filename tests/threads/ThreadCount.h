#ifndef TESTS_THREADS_THREADCOUNT_H
#define TESTS_THREADS_THREADCOUNT_H

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace Threads {

/// Threads of this process.
inline std::ptrdiff_t threadCount()
{
    std::filesystem::directory_iterator const tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

} // namespace Threads

#endif
