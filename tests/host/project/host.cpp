// Uses every public header and catches what the library throws in every way that a host may.

#include <Zyl2/Deprecated.h>
#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Log/LoggerBase.h>
#include <Zyl2/Log/Logging.h>
#include <Zyl2/Log/StandardErrorLog.h>
#include <Zyl2/Mox2/Array1d.h>
#include <Zyl2/Mox2/Array2d.h>
#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/DatasetType.h>
#include <Zyl2/Mox2/Model.h>
#include <Zyl2/Mox2/NodeProperties.h>
#include <Zyl2/Mox2/NodeType.h>
#include <Zyl2/Mox2/PropertyType.h>
#include <Zyl2/Mox2/SaverOptions.h>
#include <Zyl2/Mox2/Step.h>
#include <Zyl2/Mox2/StepList.h>
#include <Zyl2/Version.h>

#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

using namespace Zyl2::Mox2;

namespace {

int failures = 0;

void expect(bool holds, char const* what)
{
    if (!holds) {
        std::printf("does not hold: %s\n", what);
        ++failures;
    }
}

void addBeforeSaving()
{
    Model model;
    model.addNode(NodeType::Group, "too early");
}

template <typename Kind>
bool isCaughtAs()
{
    try {
        addBeforeSaving();
    } catch (Kind const&) {
        return true;
    } catch (...) {
        return false;
    }
    return false;
}

void exceptionsCrossTheLibrarysBoundary()
{
    expect(isCaughtAs<Zyl2::Exception::InvalidObjectState>(), "caught by kind");
    expect(isCaughtAs<Zyl2::Exception::Exception>(), "caught as the family");
    expect(isCaughtAs<Zyl2::Exception::Base>(), "caught as the root interface");
    expect(isCaughtAs<std::exception>(), "caught as a standard exception");
    expect(isCaughtAs<boost::exception>(), "caught as a Boost exception");
    expect(!isCaughtAs<Zyl2::Exception::OutOfBounds>(), "not caught as another kind");
    try {
        addBeforeSaving();
    } catch (Zyl2::Exception::Exception const& failure) {
        expect(failure.errorCode() == 17, "error code");
        expect(std::string(failure.what()) == "File not open.", "text");
        expect(std::string(static_cast<std::exception const&>(failure).what()) == "File not open.",
               "text through the standard base");
        char const* const* const file = boost::get_error_info<boost::throw_file>(failure);
        int const* const line = boost::get_error_info<boost::throw_line>(failure);
        expect(file != nullptr && std::string(*file) == "Zyl2/Mox2/Database", "throwing file");
        expect(line != nullptr && *line == 114, "throwing line");
    }
}

struct CountingLog : Zyl2::Log::LogSystem
{
    CountingLog() : records(0) {}

    using Zyl2::Log::LogSystem::operator+=;
    void operator+=(std::ostream const& text) override
    {
        if (dynamic_cast<Zyl2::Log::Record<char> const*>(&text) != nullptr)
            ++records;
    }

    int records;
};

void writeModel(char const* path)
{
    SaverOptions options;
    options.overwrite = true;
    options.text1 = "host";
    Model model;
    std::string const narrow(path);
    model.saveTo(std::wstring(narrow.begin(), narrow.end()), options);

    Attributes attributes;
    char buffer[] = "text";
    char* const pointer = buffer;
    attributes.set("array", buffer);
    attributes.set("pointer", pointer);
    attributes.set("double", 0.5);
    attributes.set("int", 1);
    model.addNode(NodeType::RootGroup, "Root", attributes);
    Array1d<unsigned int> const ids = model.addAssemblyComponents({"/Root/a", "/Root/b"});
    NodeProperties properties;
    properties.set(PropertyType::Transparency, 0.5);
    properties.set(PropertyType::DiffuseColor, std::vector<float>(3, 0.5F));
    model.setNodeData(ids[0], properties);

    StepList steps(2);
    steps.set(0, Step("first"));
    steps.set(1, Step("second", attributes));
    Array1d<float> const scalars(3, 1.5F);
    Array1d<unsigned int> const none(0, 0);
    model.addArrayProperty("Temperature", DatasetType::Result10, scalars, ids, steps);
    model.addArrayProperty("Temperature", DatasetType::Result10, scalars, none, steps);
    model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(3, 3, 0.0F), 4, Step());
    expect(model.getNodeId("/Root/b") == ids[1] - 1, "a path leads to the shape");
    // A reference can be bound to the constant only if the library defines it.
    unsigned int const& invalid = Model::INVALID_ID;
    expect(std::max(invalid, ids[1]) == 4294967295U, "the id that no node has");
    model.close();
}

} // namespace

int main(int argc, char** argv)
{
    exceptionsCrossTheLibrarysBoundary();
    expect(Zyl2::version() == ZYL2_VERSION, "the library is of the same version as the headers");
    CountingLog log;
    Zyl2::Log::LogSystem* const previous = Zyl2::Log::setActiveLogSystem(&log);
    writeModel(argc > 1 ? argv[1] : "host.mox");
    Zyl2::Log::setActiveLogSystem(previous);
    expect(log.records > 10, "an installed log system receives records");
    return failures == 0 ? 0 : 1;
}
