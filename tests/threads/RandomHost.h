#ifndef TESTS_THREADS_RANDOMHOST_H
#define TESTS_THREADS_RANDOMHOST_H

#include <Zyl2/Mox2/Model.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Threads {

/// A program that writes a model of random parts, arrays and blocks, the same ones for the same
/// seed.
class RandomHost
{
public:
    /// Those whose streams are always the same, of those that the library has.
    static std::vector<Zyl2::Mox2::Encoder> encoders();

    explicit RandomHost(unsigned int seed) : seed_(seed) {}

    void write(std::string const& path, Zyl2::Mox2::Encoder encoder, int threads) const;

private:
    unsigned int seed_;
};

} // namespace Threads

#endif
