// Reading models by the installed reader: all values, and one dataset of many.

#include "Arguments.h"
#include "Measurement.h"

#include <moxread/Model.h>

#include <stdexcept>

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

void readOne(Arguments const& arguments)
{
    MoxRead::ReadOptions const options = optionsOf(arguments);
    std::string const step = "Step " + arguments.text("step");
    measureReading(arguments, [&]() -> std::uint64_t {
        MoxRead::Model model(arguments.text("model"), options);
        for (MoxRead::Node const& node : model.nodes()) {
            if (node.geometry() == nullptr)
                continue;
            for (MoxRead::Variable const& variable : node.geometry()->variables)
                if (variable.stepName() == step)
                    return model.read(variable).words.size() * sizeof(float);
        }
        return 0;
    });
}

Workloads workloads()
{
    return {{"all", readAll}, {"one", readOne}};
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv, workloads());
}
