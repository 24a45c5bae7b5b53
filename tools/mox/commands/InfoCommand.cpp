#include "InfoCommand.h"

#include "CommandLine.h"
#include "Parts.h"
#include "mox/print/BlockReport.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonListing.h"
#include "mox/print/JsonWriter.h"
#include "mox/print/Listing.h"
#include "mox/print/UnfinishedFile.h"

#include "moxread/FormatError.h"
#include "moxread/GlobalInformation.h"
#include "moxread/KeyStream.h"
#include "moxread/PartitionIndex.h"
#include "moxread/Text.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>

namespace Mox {

using MoxRead::Slot;

namespace {

constexpr int keyWidth = 19;
constexpr char const* valuesKey = "Heavy Data";
constexpr std::uint8_t writtenEarlyFlag = 32;

MoxRead::GlobalInformation globalOf(MoxRead::Container const& container)
{
    MoxRead::KeyStream stream(container, "Global Information");
    return MoxRead::GlobalInformation::read(stream);
}

struct FileInfo
{
    explicit FileInfo(std::string const& path)
        : container(path), blocks(container), global(globalOf(container))
    {}

    MoxRead::Container container;
    BlockReport blocks;
    MoxRead::GlobalInformation global;
};

/// What the blocks of all files of an index take together.
struct SetSums
{
    explicit SetSums(MoxRead::PartitionIndex const& index)
    {
        index.requireFiles();
        for (MoxRead::PartitionFile const& file : index.files())
            MoxRead::inContext([&] { return MoxRead::quoted(file.name); },
                               [&] { add(MoxRead::Container(file.path)); });
    }

    void add(MoxRead::Container const& container)
    {
        BlockReport const report(container);
        bytes += container.file().size();
        add(total, report.total());
        for (BlockReport::Sum const& sum : report.keys()) {
            auto known = std::find_if(keys.begin(), keys.end(), [&](BlockReport::Sum const& other) {
                return other.key == sum.key;
            });
            if (known == keys.end())
                keys.push_back(sum);
            else
                add(*known, sum);
        }
    }

    static void add(BlockReport::Sum& to, BlockReport::Sum const& sum)
    {
        to.blocks += sum.blocks;
        to.size += sum.size;
        to.content += sum.content;
    }

    std::vector<BlockReport::Sum> keys;
    BlockReport::Sum total;
    std::uint64_t bytes = 0;
};

std::string ratioText(BlockReport::Sum const& sum)
{
    if (!sum.hasRatio())
        return "-";
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << sum.ratio();
    return text.str();
}

void printSummary(std::ostream& out, FileInfo const& info)
{
    std::uint64_t const bytes = info.container.file().size();
    out << "mox 1.3: " << bytes << " bytes, " << bytes - info.blocks.total().size
        << " of them header and root index\n"
        << info.blocks.slots() << " slots: " << info.blocks.blocks().size() << " blocks, "
        << info.blocks.spareSlots() << " spare\n";
    printWritings(out, info.global.writings);
}

void printBlocks(std::ostream& out, BlockReport const& report)
{
    out << "\n  slot   id  " << std::left << std::setw(keyWidth) << "key" << std::right
        << "    position        size     content  compressed\n";
    for (BlockReport::Block const& block : report.blocks()) {
        Slot const& slot = block.slot;
        out << std::setw(6) << slot.number << "  " << std::setw(3) << unsigned{slot.id} << "  "
            << std::left << std::setw(keyWidth) << block.key << std::right << std::setw(12)
            << slot.position << std::setw(12) << slot.size << std::setw(12) << block.content
            << (slot.isCompressed() ? "  yes\n" : "  no\n");
    }
}

void printSum(std::ostream& out, std::string const& name, BlockReport::Sum const& sum)
{
    out << std::left << std::setw(keyWidth) << name << std::right << std::setw(8) << sum.blocks
        << std::setw(14) << sum.size << std::setw(14) << sum.content << std::setw(10)
        << ratioText(sum) << '\n';
}

void printSums(std::ostream& out, std::vector<BlockReport::Sum> const& keys,
               BlockReport::Sum const& total)
{
    out << '\n'
        << std::left << std::setw(keyWidth) << "key" << std::right
        << "  blocks          size       content     ratio\n";
    for (BlockReport::Sum const& sum : keys)
        printSum(out, sum.key, sum);
    printSum(out, "in all", total);
}

void printText(std::ostream& out, FileInfo const& info)
{
    printSummary(out, info);
    printBlocks(out, info.blocks);
    printSums(out, info.blocks.keys(), info.blocks.total());
}

void writeSum(JsonWriter& json, BlockReport::Sum const& sum)
{
    json.member("blockCount", sum.blocks).member("size", sum.size).member("content", sum.content);
    json.key("ratio");
    if (sum.hasRatio())
        json.value(sum.ratio());
    else
        json.null();
}

void writeBlocks(JsonWriter& json, BlockReport const& report)
{
    json.key("blocks").beginArray();
    for (BlockReport::Block const& block : report.blocks()) {
        Slot const& slot = block.slot;
        json.beginObject(JsonWriter::OneLine).member("slot", slot.number).member("key", block.key);
        json.member("id", unsigned{slot.id}).member("position", slot.position);
        json.member("size", slot.size).member("compressed", slot.isCompressed());
        json.member("writtenEarly", (slot.transformations & writtenEarlyFlag) != 0);
        json.member("content", block.content).endObject();
    }
    json.endArray();
}

void writeSums(JsonWriter& json, std::vector<BlockReport::Sum> const& keys,
               BlockReport::Sum const& total)
{
    json.key("keys").beginArray();
    for (BlockReport::Sum const& sum : keys) {
        json.beginObject(JsonWriter::OneLine).member("key", sum.key);
        writeSum(json, sum);
        json.endObject();
    }
    json.endArray().key("total").beginObject(JsonWriter::OneLine);
    writeSum(json, total);
    json.endObject();
}

void printJson(std::ostream& out, FileInfo const& info, std::string const& file)
{
    JsonWriter json(out);
    json.beginObject().member("file", file).member("format", "1.3");
    json.member("bytes", info.container.file().size());
    json.member("slotCount", info.blocks.slots())
        .member("spareSlotCount", info.blocks.spareSlots());
    writeWritings(json, info.global.writings);
    writeBlocks(json, info.blocks);
    writeSums(json, info.blocks.keys(), info.blocks.total());
    json.endObject();
}

void printUnfinished(std::ostream& out, UnfinishedFile const& file)
{
    out << "incomplete: " << file.state << '\n';
    printWritings(out, globalOf(MoxRead::Container(file.outline)).writings);
    out << "\n  slot  " << std::left << std::setw(keyWidth) << "key" << std::right
        << "    position        size     content\n";
    for (UnfinishedFile::Block const& block : file.blocks) {
        bool const isSaved = block.size != 0;
        out << std::setw(6) << block.slot << "  " << std::left << std::setw(keyWidth) << valuesKey
            << std::right << std::setw(12) << (isSaved ? std::to_string(block.position) : "-")
            << std::setw(12) << (isSaved ? std::to_string(block.size) : "-") << std::setw(12)
            << block.content << '\n';
    }
}

void printUnfinishedJson(std::ostream& out, UnfinishedFile const& file, std::string const& path)
{
    JsonWriter json(out);
    json.beginObject().member("file", path).member("format", "1.3");
    json.member("incomplete", file.state);
    writeWritings(json, globalOf(MoxRead::Container(file.outline)).writings);
    json.key("blocks").beginArray();
    for (UnfinishedFile::Block const& block : file.blocks) {
        json.beginObject(JsonWriter::OneLine).member("slot", block.slot).member("key", valuesKey);
        json.member("saved", block.size != 0).member("position", block.position);
        json.member("size", block.size).member("content", block.content).endObject();
    }
    json.endArray().endObject();
}

void printSet(std::ostream& out, std::string const& path, bool asJson)
{
    MoxRead::PartitionIndex const index(path);
    SetSums const sums(index);
    if (!asJson) {
        out << "mox set 1: " << index.files().size() << " files of " << index.ranks() << " ranks, "
            << sums.bytes << " bytes\n";
        printSums(out, sums.keys, sums.total);
        return;
    }
    JsonWriter json(out);
    json.beginObject().member("file", path).member("fileCount", index.files().size());
    json.member("rankCount", index.ranks()).member("bytes", sums.bytes);
    writeSums(json, sums.keys, sums.total);
    json.endObject();
}

void showWhole(InfoArguments const& options, std::ostream& out)
{
    FileInfo const info(options.file);
    if (options.json)
        printJson(out, info, options.file);
    else
        printText(out, info);
}

int showParts(InfoArguments const& options, std::ostream& out, std::ostream& err)
{
    return forEachPart(options.file, err, [&](Part const& part) {
        out << part.path << ":\n";
        InfoArguments own = options;
        own.file = part.path;
        return showInfo(own, out, err);
    });
}

} // namespace

void addInfoCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<InfoArguments>();
    SubCommand command = commandLine.addCommand(
        "info", "Show the blocks of a model file and how well they compress");
    command.add("FILE", options->file, "Model file, or index of a partitioned model").required();
    Argument const parts =
        command.addFlag("--parts", options->parts, "Show the files of an index one by one");
    command.addFlag("--json", options->json, "Print JSON").excludes(parts);
    command.explain("Example:\n  mox info beam.mox");
    command.run([options] { return showInfo(*options, std::cout, std::cerr); });
}

int showInfo(InfoArguments const& options, std::ostream& out, std::ostream& err)
{
    bool const isSet = MoxRead::PartitionIndex::isIndex(options.file);
    if (isSet && options.parts)
        return showParts(options, out, err);
    return runOnFile(options.file, err, [&] {
        if (isSet)
            return printSet(out, options.file, options.json);
        onWholeOrUnfinished(
            options.file, [&] { showWhole(options, out); },
            [&](UnfinishedFile const& file) {
                if (options.json)
                    printUnfinishedJson(out, file, options.file);
                else
                    printUnfinished(out, file);
            });
    });
}

} // namespace Mox
