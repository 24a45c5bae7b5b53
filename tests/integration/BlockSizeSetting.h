#ifndef TESTS_INTEGRATION_BLOCKSIZESETTING_H
#define TESTS_INTEGRATION_BLOCKSIZESETTING_H

#include <optional>
#include <string>

namespace Integration {

/// The default block size for as long as the object lives, then what was there before.
class BlockSizeSetting
{
public:
    /// \param value the variable's text; none removes the variable
    explicit BlockSizeSetting(std::optional<std::string> const& value);
    ~BlockSizeSetting();
    BlockSizeSetting(BlockSizeSetting const&) = delete;
    BlockSizeSetting& operator=(BlockSizeSetting const&) = delete;

private:
    std::optional<std::string> previous_;
};

} // namespace Integration

#endif
