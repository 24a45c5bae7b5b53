#ifndef ZYL2_MOX2_RECOVERY_KEPTVALUES_H
#define ZYL2_MOX2_RECOVERY_KEPTVALUES_H

#include "Zyl2/Util/Buffer.h"
#include "Zyl2/Wvf/KnownStreams.h"
#include "Zyl2/Wvf/RecoveryFolder.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// The values that a run had put, whether their blocks were saved or not.
class KeptValues : public Zyl2Wvf::KnownStreams
{
public:
    /// \param modelFile may be missing, as long as no block is looked for there
    KeptValues(Zyl2Wvf::RecoveryFolder const& folder, std::string const& modelFile);
    ~KeptValues() override;
    KeptValues(KeptValues const&) = delete;
    KeptValues& operator=(KeptValues const&) = delete;

    /// A block was begun at `position`, in the file of that number.
    void noteBegun(std::uint64_t slot, std::uint64_t number, std::uint64_t position);
    /// \return whether the block was begun before, and can have so much content
    bool noteSaved(std::uint64_t slot, std::uint64_t offset, std::uint32_t size,
                   std::uint32_t contentLength);

    /// Where the first block behind `position` begins; the greatest number when there is none.
    std::uint64_t nextBegun(std::uint64_t position) const;

    /// Whether so many bytes from `position` on are within a block that was begun, as far as that
    /// is known without looking at them.
    bool has(std::uint64_t position, std::uint64_t length) const;

    /// The bytes that were put at `position`, valid until the next call.
    /// \return null where they can't be had, or don't have the checksum
    unsigned char const* find(std::uint64_t position, std::uint64_t length, std::uint32_t checksum);

    /// Copies the compressed stream of a block that was saved to the model file.
    std::size_t Copy(std::size_t slot, std::uint32_t length, Zyl2Util::Buffer& stream) override;

private:
    struct Saved
    {
        std::uint64_t offset;
        std::uint32_t size;
        std::uint32_t contentLength;
    };
    struct BlockOfRun
    {
        std::uint64_t slot;
        std::uint64_t number;
        std::uint64_t position;
        std::optional<Saved> saved;
    };

    unsigned char const* read(BlockOfRun const& block, std::uint64_t from, std::uint64_t length);
    bool inflate(BlockOfRun const& block);

    Zyl2Wvf::RecoveryFolder const& folder_;
    int modelFile_;
    /// The blocks of the run, by the positions of their first bytes.
    std::map<std::uint64_t, BlockOfRun> blocks_;
    /// The position of the block that a slot has.
    std::map<std::uint64_t, std::uint64_t> slots_;
    Zyl2Util::Buffer content_;
    Zyl2Util::Buffer stream_;
    /// Which block `content_` holds.
    std::optional<std::uint64_t> inflated_;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
