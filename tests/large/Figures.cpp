#include "large/Figures.h"

#include <fstream>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <utility>

namespace Large {

std::uint64_t peakMemory()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        std::uint64_t kibibytes = 0;
        if (word == "VmHWM:" && status >> kibibytes)
            return kibibytes * 1024;
    }
    throw std::runtime_error("the system does not tell the peak of the memory");
}

Figures::Figures(std::string subject)
    : subject_(std::move(subject)), start_(std::chrono::steady_clock::now())
{}

void Figures::lap(std::string const& stage, std::uint64_t bytes)
{
    auto const end = std::chrono::steady_clock::now();
    double const seconds = std::chrono::duration<double>(end - start_).count();
    std::cout << subject_ << ": " << stage << ": " << bytes << " bytes, " << std::fixed
              << std::setprecision(1) << seconds << " s, peak memory " << peakMemory() / 1048576
              << " MiB" << std::endl;
    start_ = end;
}

} // namespace Large
