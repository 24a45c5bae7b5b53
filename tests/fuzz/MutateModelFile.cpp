#include "MutateModelFile.h"

#include "FileParts.h"

#include <array>
#include <random>
#include <utility>

namespace Fuzz {

namespace {

constexpr std::array<char const*, 9> names = {"Mox Tree",
                                              "Light Data",
                                              "Heavy Data",
                                              "Attributes",
                                              "Resources",
                                              "Global Information",
                                              "View Points",
                                              "\x0BIndex Block ",
                                              "\x0B"
                                              "Empty Block "};

constexpr std::array<std::uint32_t, 12> strikingWords = {
    0, 1, 2, 3, 6, 255, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x3FFFFFFF, 0x10000, 0xFFFFFFFC};

/// Makes one change to a file, of a kind and at a place that the seed chooses.
class Mutation
{
public:
    Mutation(FileParts file, unsigned int seed, BlindMutation const& mutateBlindly)
        : file_(std::move(file)), engine_(seed), mutateBlindly_(mutateBlindly)
    {}

    FileParts run()
    {
        switch (below(12)) {
        case 0:
            changeEntry();
            break;
        case 1:
            changeSize();
            break;
        case 2:
            anyPart().rename(names[below(names.size())]);
            break;
        case 3:
            storeOtherwise();
            break;
        case 4:
            splitBlock();
            break;
        case 5:
            std::swap(anyBlock(), anyBlock());
            break;
        case 6:
            changeBlockItself();
            break;
        case 7:
        case 8:
            patchWord();
            break;
        default:
            changeContent();
        }
        return file_;
    }

private:
    std::size_t below(std::size_t end) { return engine_() % end; }
    Part& anyPart() { return file_.parts[below(file_.parts.size())]; }

    Part& anyBlock()
    {
        std::vector<std::size_t> blocks;
        for (std::size_t slot = 0; slot < file_.parts.size(); ++slot)
            if (!file_.parts[slot].isSpare() && !file_.parts[slot].isIndexBlock())
                blocks.push_back(slot);
        return blocks.empty() ? anyPart() : file_.parts[blocks[below(blocks.size())]];
    }

    void changeEntry()
    {
        std::string& entry = anyPart().entry;
        std::string const changed = mutateBlindly_(entry, entry.size());
        entry = changed + entry.substr(changed.size());
    }

    void changeSize()
    {
        Part& part = anyPart();
        std::array<std::uint32_t, 3> const sizes = {part.statedSize() + 1, part.statedSize() - 1,
                                                    strikingWords[below(strikingWords.size())]};
        part.stateSize(sizes[below(sizes.size())]);
    }

    /// Compresses a block that was not compressed, or stores one uncompressed that was.
    void storeOtherwise()
    {
        Part& part = anyBlock();
        auto const content = part.content();
        if (!content)
            return;
        part.setCompressed(!part.isCompressed());
        part.setContent(*content);
    }

    /// Lets the stream of a key go on in another block, at any byte.
    void splitBlock()
    {
        Part& part = anyBlock();
        auto const content = part.content();
        auto const slot = static_cast<std::size_t>(&part - file_.parts.data());
        if (!content || content->empty() || !file_.parts.back().isSpare())
            return;
        std::size_t const cut = below(content->size() + 1);
        Part second = part;
        second.setContent(content->substr(cut));
        part.setContent(content->substr(0, cut));
        auto const place = file_.parts.begin() + static_cast<std::ptrdiff_t>(slot) + 1;
        file_.parts.insert(place, second);
        file_.parts.pop_back();
        for (std::size_t i = 0; i < file_.parts.size(); ++i)
            file_.parts[i].entry[0] = static_cast<char>(static_cast<unsigned char>(i + 1));
    }

    /// Mutates the bytes of a block as they are in the file: of a compressed one, the stated length
    /// or the zlib stream.
    void changeBlockItself()
    {
        Part& part = anyBlock();
        part.block = mutateBlindly_(part.block, part.block.size() + 16);
        part.stateSize(static_cast<std::uint32_t>(part.block.size()));
    }

    void changeContent()
    {
        Part& part = anyBlock();
        if (auto const content = part.content())
            part.setContent(mutateBlindly_(*content, content->size() + 256));
    }

    /// Replaces four bytes of a content, since counts, lengths, ids and positions have four.
    void patchWord()
    {
        Part& part = anyBlock();
        auto content = part.content();
        if (!content || content->size() < 4)
            return;
        std::size_t const offset = below(content->size() - 3);
        std::uint32_t word = strikingWords[below(strikingWords.size())];
        for (std::size_t i = 0; i < 4; ++i, word >>= 8U)
            (*content)[offset + i] = static_cast<char>(static_cast<unsigned char>(word & 0xFFU));
        part.setContent(*content);
    }

    FileParts file_;
    std::minstd_rand engine_;
    BlindMutation const& mutateBlindly_;
};

constexpr unsigned int blindOneIn = 20;

} // namespace

std::string mutatedModelFile(std::string const& file, std::size_t greatestSize, unsigned int seed,
                             BlindMutation const& mutateBlindly)
{
    auto parts = FileParts::of(file);
    if (!parts || seed % blindOneIn == 0)
        return mutateBlindly(file, greatestSize);
    std::string const mutated = Mutation(*std::move(parts), seed, mutateBlindly).run().join();
    return mutated.size() <= greatestSize ? mutated : mutateBlindly(file, greatestSize);
}

} // namespace Fuzz
