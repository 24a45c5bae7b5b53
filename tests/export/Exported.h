#ifndef TESTS_EXPORT_EXPORTED_H
#define TESTS_EXPORT_EXPORTED_H

#include "ReadBack.h"
#include "mox/ModelFile.h"

#include <export/Error.h>
#include <export/Export.h>

#include <Zyl2/Mox2/Model.h>

#include <functional>
#include <string>
#include <vector>

namespace ExportTest {

using MoxTest::ModelFile;
using namespace Zyl2::Mox2;

using Floats = std::vector<float>;
using Numbers = std::vector<unsigned int>;

inline Array2d<float> rows(unsigned long width, Floats const& values)
{
    return Array2d<float>(values.size() / width, width, values);
}

/// Nodes 0, 1 and 2 at the corners of a triangle.
inline Floats const& triangleNodes()
{
    static Floats const nodes = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    return nodes;
}

/// A shape with the triangle; returns its id.
inline unsigned int addTriangle(Model& model, std::string const& name)
{
    unsigned int const shape = model.addNode(NodeType::Shape, name);
    model.addArrayProperty(DatasetType::Coordinates, rows(3, triangleNodes()), shape, Step());
    model.addArrayProperty(DatasetType::Connectivity2, Array1d<unsigned int>{0, 1, 2}, shape,
                           Step());
    model.addArrayProperty(DatasetType::Polylength2, Array1d<unsigned int>{3}, shape, Step());
    return shape;
}

inline Step timed(std::string const& name, float time)
{
    Attributes attributes;
    attributes.set("Time", time);
    return Step(name, attributes);
}

/// Makes the group current that holds the latest shape.
inline void leaveShape(Model& model)
{
    model.moveToParentNode();
    model.moveToParentNode();
}

inline vtkSmartPointer<vtkUnstructuredGrid>
exportedGrid(ModelFile const& file, Export::ExportOptions const& options = Export::ExportOptions())
{
    Export::exportModel(file.path(), file.path("out.vtu"), options);
    return ReadBack::grid(file.path("out.vtu"));
}

/// What exporting says is wrong, without the name of the file before it.
inline std::string complaintAbout(ModelFile::Program const& program,
                                  std::string const& output = "out.vtu")
{
    ModelFile const file(program);
    try {
        Export::exportModel(file.path(), file.path(output));
    } catch (Export::Error const& error) {
        std::string const start = file.path() + ": ";
        std::string const text = error.what();
        return text.compare(0, start.size(), start) == 0 ? text.substr(start.size()) : text;
    }
    return "";
}

} // namespace ExportTest

#endif
