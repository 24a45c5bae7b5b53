#include "threads/RandomHost.h"

#include "integration/Random.h"

#include <algorithm>

namespace Threads {

namespace {

using namespace Zyl2::Mox2;
using Integration::Random;

/// Of noise nothing becomes shorter, of a curve much does.
Array2d<float> values(Random& random, std::size_t rows, std::size_t width)
{
    bool const isNoise = random.below(3) == 0;
    Array2d<float> result(rows, width);
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < width; ++column)
            result(row, column) = isNoise ? static_cast<float>(random.below(std::size_t(1) << 24U))
                                          : static_cast<float>((row + column) % 500) * 0.1F;
    return result;
}

} // namespace

std::vector<Encoder> RandomHost::encoders()
{
    bool const hasLibdeflate = std::string(FOUND_ENCODERS).find("libdeflate") != std::string::npos;
    return hasLibdeflate ? std::vector<Encoder>{Encoder::Zlib, Encoder::Libdeflate}
                         : std::vector<Encoder>{Encoder::Zlib};
}

void RandomHost::write(std::string const& path, Encoder encoder, int threads) const
{
    constexpr std::size_t smallestBlock = 10; // 1 KiB
    constexpr std::size_t largestBlock = 20;  // 1 MiB
    constexpr std::size_t mostBytes = std::size_t(1) << 20U;
    Random random(seed_);
    std::size_t const block = std::size_t(1)
                              << (smallestBlock + random.below(largestBlock - smallestBlock + 1));
    SaverOptions options;
    options.overwrite = true;
    options.encoder = encoder;
    options.threads = threads;
    options.blockSize = block;

    Model model;
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "root");
    std::vector<unsigned int> shapes{model.addNode(NodeType::Shape, "shape")};
    std::size_t const arrays = random.below(40);
    std::size_t left = std::min(block * 12, 3 * mostBytes / 2);
    for (std::size_t array = 0; array < arrays && left != 0; ++array) {
        if (random.below(4) == 0) {
            model.setCurrentNodeId(1);
            shapes.push_back(model.addNode(NodeType::Shape, "shape " + std::to_string(array)));
        }
        // Some are longer than a block, many share one.
        std::size_t const most = random.below(3) == 0 ? 2 * block : block / 2;
        std::size_t const bytes = std::min(left, random.below(most));
        std::size_t const width = random.below(2) == 0 ? 1 : 3;
        model.addArrayProperty("array " + std::to_string(array),
                               width == 1 ? DatasetType::Result10 : DatasetType::Result11,
                               values(random, bytes / sizeof(float) / width, width),
                               random.pick(shapes), Step("step"));
        left -= bytes;
    }
    model.close();
}

} // namespace Threads
