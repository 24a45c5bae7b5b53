#include "Measurement.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace Bench {

std::uint64_t peakResidentBytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

std::uint64_t residentBytes()
{
    std::uint64_t size = 0;
    std::uint64_t resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

std::uint64_t bytesOfFolder(std::string const& folder)
{
    std::uint64_t result = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            result += entry.file_size();
    return result;
}

void print(Measurement const& measurement, std::uint64_t residentBefore)
{
    std::uint64_t const peak = peakResidentBytes();
    std::cout.precision(9);
    std::cout << "{\"seconds\": " << measurement.seconds
              << ", \"bytes_in\": " << measurement.bytesIn
              << ", \"file_bytes\": " << measurement.bytesOut << ", \"peak_rss\": " << peak
              << ", \"peak_beyond_host\": " << peak - std::min(peak, residentBefore) << "}\n";
}

} // namespace Bench
