#include "GmshFile.h"

#include <gmsh.h>

#include <memory>

namespace GmshTest {

Library::Library()
{
    gmsh::initialize(0, nullptr, false);
    gmsh::option::setNumber("General.Terminal", 0);
}

Library::~Library()
{
    gmsh::finalize();
}

Opened::Opened(std::filesystem::path const& path, bool skipUnknown)
{
    report.skipUnknown = skipUnknown;
    std::unique_ptr<Exchange::Source> const source = Gmsh::open(path, report);
    parts = source->readParts();
    for (std::size_t i = 0; i < source->stepCount(); ++i) {
        steps.push_back(source->step(i));
        fields.emplace_back();
        source->readStep(i,
                         [this](Exchange::Field const& field) { fields.back().push_back(field); });
    }
}

Exchange::Field const* Opened::find(std::size_t step, std::string const& name,
                                    std::size_t part) const
{
    for (Exchange::Field const& field : fields.at(step))
        if (field.name == name && field.part == part)
            return &field;
    return nullptr;
}

Values Opened::values(std::size_t step, std::string const& name, std::size_t part) const
{
    Exchange::Field const* const field = find(step, name, part);
    if (field == nullptr)
        throw std::runtime_error("no field " + name);
    return std::get<Values>(field->values);
}

Names Opened::partNames() const
{
    Names names;
    for (Exchange::Part const& part : parts)
        names.push_back(part.name);
    return names;
}

Names Opened::warnings() const
{
    Names all;
    report.forEachWarning([&all](std::string const& warning) { all.push_back(warning); });
    return all;
}

} // namespace GmshTest
