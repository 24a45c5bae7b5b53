#include "ViewCommand.h"

#include "CommandLine.h"
#include "Parts.h"
#include "ViewerOutput.h"
#include "mox/formats/Libraries.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>

namespace Mox {

namespace {

constexpr int leastSize = 200;
constexpr int greatestSize = 8192;

std::string complaintAboutPicture(std::string const& path)
{
    return std::filesystem::path(path).extension() == ".png" ? ""
                                                             : path + " does not end with .png";
}

bool isSize(int pixels)
{
    return pixels >= leastSize && pixels <= greatestSize;
}

bool readSize(std::string const& text, Export::ViewOptions& options)
{
    char rest = 0;
    int const found = std::sscanf(text.c_str(), "%dx%d%c", &options.width, &options.height, &rest);
    return found == 2 && isSize(options.width) && isSize(options.height);
}

std::string complaintAboutSize(std::string const& text)
{
    Export::ViewOptions ignored;
    return readSize(text, ignored)
               ? ""
               : text + " is no size such as 1280x960, of " + std::to_string(leastSize) + " to " +
                     std::to_string(greatestSize) + " pixels";
}

std::map<std::string, Export::Camera> const& cameras()
{
    static std::map<std::string, Export::Camera> const all = {{"iso", Export::Camera::Iso},
                                                              {"x", Export::Camera::X},
                                                              {"y", Export::Camera::Y},
                                                              {"z", Export::Camera::Z}};
    return all;
}

std::vector<std::string> namesOfCameras()
{
    std::vector<std::string> names;
    for (auto const& [name, camera] : cameras())
        names.push_back(name);
    return names;
}

void addAppearance(SubCommand& command, ViewArguments& arguments)
{
    command
        .add("--warp", arguments.options.warp,
             "Factor of the displacements (default: the largest becomes a tenth of the size)")
        .placeholder("N");
    command.add("--size", arguments.size, "Width and height (default: 1280x960)")
        .placeholder("WxH")
        .check(complaintAboutSize);
    command.add("--camera", arguments.camera, "Where to look from (default: iso)")
        .placeholder("iso|x|y|z")
        .oneOf(namesOfCameras());
    command.addFlag("--edges", arguments.options.edges, "Draw the edges of the elements, too");
}

void addArguments(SubCommand& command, ViewArguments& arguments)
{
    std::vector<std::string> const components = {"magnitude", "x",  "y",  "z",  "xx",   "yy",
                                                 "zz",        "xy", "yz", "zx", "mises"};
    command.add("FILE", arguments.input, "Model file, or index of a partitioned model").required();
    command.add("OUT", arguments.output, "Picture to be made: .png")
        .required()
        .check(complaintAboutPicture);
    command.add("--step", arguments.options.step, "Step to show (default: the last)");
    command.add("--field", arguments.options.field,
                "Field to show (default: Displacement, else the first)");
    command
        .add("--component", arguments.options.component,
             "What of the field to show (default: magnitude, or mises of a tensor)")
        .placeholder("magnitude|x|y|z|xx|yy|zz|xy|yz|zx|mises")
        .oneOf(components);
    addAppearance(command, arguments);
    command.addFlag("--overwrite", arguments.options.overwrite, "Replace OUT if it exists");
    Argument const parts = command.addFlag("--parts", arguments.parts,
                                           "Make one of each file of an index: OUT with a number");
    command.addFlag("--json", arguments.json, "Say as JSON what the picture shows").excludes(parts);
}

} // namespace

void addViewCommand(CommandLine& commandLine)
{
    auto const arguments = std::make_shared<ViewArguments>();
    SubCommand command = commandLine.addCommand("view", "Draw a picture of a model");
    addArguments(command, *arguments);
    command.explain(
        "Example:\n  mox view cantilever.mox stress.png --field STRESS --component mises");
    command.run([arguments] {
        if (!arguments->size.empty())
            readSize(arguments->size, arguments->options);
        if (!arguments->camera.empty())
            arguments->options.camera = cameras().at(arguments->camera);
        return runWithLibrary(Library::Vtk, "mox view",
                              [&] { return viewFile(*arguments, std::cout, std::cerr); });
    });
}

int viewFile(ViewArguments const& arguments, std::ostream& out, std::ostream& err)
{
    if (arguments.parts && MoxRead::PartitionIndex::isIndex(arguments.input))
        return forEachPart(arguments.input, err, [&](Part const& part) {
            ViewArguments own = arguments;
            own.input = part.path;
            own.output = part.outputFor(arguments.output);
            return viewFile(own, out, err);
        });
    ViewerOutput const target("view", arguments.output, arguments.json, out, err);
    return target.make(arguments.input, arguments.options, viewWithVtk);
}

} // namespace Mox
