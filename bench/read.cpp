// Reading models by the installed reader: all values, and one dataset of many. "inflate" and
// "inflate-one" do nothing but inflate the blocks that these need, which no reader can do without.

#include "Arguments.h"
#include "Measurement.h"

#include <moxread/BlockReader.h>
#include <moxread/Model.h>
#include <moxread/WholeInflater.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

using namespace Bench;

namespace {

MoxRead::ReadOptions optionsOf(Arguments const& arguments)
{
    std::string const& name = arguments.text("inflater");
    MoxRead::ReadOptions options;
    for (MoxRead::Inflater const inflater : MoxRead::builtInflaters())
        if (nameOf(inflater) == name)
            options.inflater = inflater;
    if (options.inflater == MoxRead::Inflater::Fastest)
        throw std::invalid_argument("no inflater " + name);
    return options;
}

/// \param read opens the file and returns how many bytes of values it got
template <typename Read>
void measureReading(Arguments const& arguments, Read const& read)
{
    std::uint64_t got = 0;
    measure(
        arguments.number("bytes"), [&] { got = read(); }, [&] { return got; });
    if (got != arguments.number("bytes"))
        throw std::runtime_error("other values were read than were written");
}

void readAll(Arguments const& arguments)
{
    MoxRead::ReadOptions const options = optionsOf(arguments);
    measureReading(arguments, [&] {
        std::uint64_t bytes = 0;
        MoxRead::Model model(arguments.text("model"), options);
        model.readAll([&](MoxRead::Model::Variables const&, MoxRead::Dataset const& dataset) {
            bytes += dataset.words.size() * sizeof(float);
        });
        return bytes;
    });
}

MoxRead::Variable const& variableOfStep(MoxRead::Model const& model, Arguments const& arguments)
{
    std::string const step = "Step " + arguments.text("step");
    for (MoxRead::Node const& node : model.nodes()) {
        if (node.geometry() == nullptr)
            continue;
        for (MoxRead::Variable const& variable : node.geometry()->variables)
            if (variable.stepName() == step)
                return variable;
    }
    throw std::runtime_error("no " + step);
}

void readOne(Arguments const& arguments)
{
    MoxRead::ReadOptions const options = optionsOf(arguments);
    measureReading(arguments, [&]() -> std::uint64_t {
        MoxRead::Model model(arguments.text("model"), options);
        return model.read(variableOfStep(model, arguments)).words.size() * sizeof(float);
    });
}

struct Stream
{
    std::vector<std::uint8_t> bytes;
    /// Of the content.
    std::size_t length;
};

Stream streamOf(MoxRead::Container const& container, MoxRead::Slot const& slot)
{
    constexpr std::size_t lengthSize = 4;
    Stream stream{std::vector<std::uint8_t>(slot.size - lengthSize),
                  MoxRead::BlockReader(container.file(), slot).length()};
    container.file().read(slot.position + lengthSize, stream.bytes.data(), stream.bytes.size());
    return stream;
}

/// From memory to memory that was touched before.
void measureInflating(Arguments const& arguments, MoxRead::Container const& container,
                      std::vector<MoxRead::Slot> const& slots)
{
    std::vector<Stream> streams;
    std::size_t largest = 0;
    for (MoxRead::Slot const& slot : slots) {
        streams.push_back(streamOf(container, slot));
        largest = std::max(largest, streams.back().length);
    }
    std::vector<std::uint8_t> room(largest, 1);
    std::uint64_t inflated = 0;
    measure(
        arguments.number("bytes"),
        [&] {
            for (Stream const& stream : streams) {
                if (!container.inflater()(stream.bytes.data(), stream.bytes.size(), room.data(),
                                          stream.length))
                    throw std::runtime_error("a stream can't be inflated");
                inflated += stream.length;
            }
        },
        [&] { return inflated; });
}

void inflateAll(Arguments const& arguments)
{
    MoxRead::Container const container(arguments.text("model"), optionsOf(arguments));
    measureInflating(arguments, container, container.slotsOf("Heavy Data"));
}

void inflateOne(Arguments const& arguments)
{
    MoxRead::Model const model(arguments.text("model"), optionsOf(arguments));
    std::size_t const block = model.heavyBlock(variableOfStep(model, arguments));
    measureInflating(arguments, model.container(),
                     {model.container().slotsOf("Heavy Data").at(block)});
}

Workloads workloads()
{
    return {
        {"all", readAll}, {"one", readOne}, {"inflate", inflateAll}, {"inflate-one", inflateOne}};
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv, workloads());
}
