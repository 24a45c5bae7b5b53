// Writes datasets one after the other and prints, in bytes, by how much the process's resident
// memory grew at most while it did: stream_datasets FILE COUNT BYTES

#include <Zyl2/Mox2/Model.h>

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using namespace Zyl2::Mox2;

constexpr unsigned long valueSize = 4;

/// A number of the process's status, such as "VmHWM:", in bytes.
std::uint64_t statusOf(std::string const& field)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        std::uint64_t kibibytes = 0;
        if (word == field && status >> kibibytes)
            return kibibytes * 1024;
    }
    throw std::runtime_error("the system does not tell " + field);
}

/// Values that compress to half their size.
void fill(Array1d<unsigned int>& values, std::uint32_t seed)
{
    std::uint32_t state = seed * 2654435761U + 1;
    for (unsigned long index = 0; index < values.size(); ++index) {
        state = state * 1664525U + 1013904223U;
        values[index] = state >> 16U;
    }
}

std::uint64_t writeDatasets(char const* path, unsigned int count, unsigned long byteCount)
{
    Model model;
    model.saveTo(path);
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    std::uint64_t const before = statusOf("VmRSS:");
    Array1d<unsigned int> values(byteCount / valueSize);
    for (unsigned int dataset = 0; dataset < count; ++dataset) {
        fill(values, dataset);
        model.addArrayProperty("dataset " + std::to_string(dataset), DatasetType::Result10, values,
                               shape, Step());
    }
    model.close();
    return statusOf("VmHWM:") - before;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc != 4)
            return EXIT_FAILURE;
        std::cout << writeDatasets(argv[1], static_cast<unsigned int>(std::stoul(argv[2])),
                                   std::stoul(argv[3]))
                  << '\n';
        return EXIT_SUCCESS;
    } catch (std::exception const& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
