#include "InfoCommand.h"

#include "CommandLine.h"
#include "mox/print/BlockReport.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonListing.h"
#include "mox/print/JsonWriter.h"
#include "mox/print/Listing.h"

#include "moxread/GlobalInformation.h"
#include "moxread/KeyStream.h"

#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>

namespace Mox {

using MoxRead::Slot;

namespace {

constexpr auto oneLine = JsonWriter::Layout::OneLine;
constexpr int keyWidth = 19;
constexpr std::uint8_t writtenEarlyFlag = 32;

struct FileInfo
{
    explicit FileInfo(std::string const& path) : container(path), blocks(container)
    {
        MoxRead::KeyStream stream(container, "Global Information");
        global = MoxRead::GlobalInformation::read(stream);
    }

    MoxRead::Container container;
    BlockReport blocks;
    MoxRead::GlobalInformation global;
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

void printSums(std::ostream& out, BlockReport const& report)
{
    out << '\n'
        << std::left << std::setw(keyWidth) << "key" << std::right
        << "  blocks          size       content     ratio\n";
    for (BlockReport::Sum const& sum : report.keys())
        printSum(out, sum.key, sum);
    printSum(out, "in all", report.total());
}

void printText(std::ostream& out, FileInfo const& info)
{
    printSummary(out, info);
    printBlocks(out, info.blocks);
    printSums(out, info.blocks);
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
        json.beginObject(oneLine).member("slot", slot.number).member("key", block.key);
        json.member("id", unsigned{slot.id}).member("position", slot.position);
        json.member("size", slot.size).member("compressed", slot.isCompressed());
        json.member("writtenEarly", (slot.transformations & writtenEarlyFlag) != 0);
        json.member("content", block.content).endObject();
    }
    json.endArray();
}

void writeSums(JsonWriter& json, BlockReport const& report)
{
    json.key("keys").beginArray();
    for (BlockReport::Sum const& sum : report.keys()) {
        json.beginObject(oneLine).member("key", sum.key);
        writeSum(json, sum);
        json.endObject();
    }
    json.endArray().key("total").beginObject(oneLine);
    writeSum(json, report.total());
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
    writeSums(json, info.blocks);
    json.endObject();
}

} // namespace

void addInfoCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<InfoArguments>();
    SubCommand command = commandLine.addCommand(
        "info", "Show the blocks of a model file and how well they compress");
    command.add("FILE", options->file, "Model file").required();
    command.addFlag("--json", options->json, "Print JSON");
    command.explain("Example:\n  mox info beam.mox");
    command.run([options] { return showInfo(*options, std::cout, std::cerr); });
}

int showInfo(InfoArguments const& options, std::ostream& out, std::ostream& err)
{
    return runOnFile(options.file, err, [&] {
        FileInfo const info(options.file);
        if (options.json)
            printJson(out, info, options.file);
        else
            printText(out, info);
    });
}

} // namespace Mox
