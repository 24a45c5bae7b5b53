#include "Inputs.h"

#include "Violation.h"

#include "container/TemporaryFile.h"
#include "integration/CallSequence.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace Fuzz {

void buildModel(std::uint8_t const* bytes, std::size_t size)
{
    static Support::TemporaryFolder const folder;
    std::string const path = folder.File("model.mox");
    std::remove(path.c_str());
    Integration::Random random(bytes, size);
    Support::DefaultBlockSizeSetting const setting(random.pick(Integration::blockSizes));
    Integration::runCallSequence(random, path);
    require(!testing::Test::HasFailure(), "a model is not as its calls demand");
}

} // namespace Fuzz
