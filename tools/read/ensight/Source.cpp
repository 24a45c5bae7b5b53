#include "Source.h"

#include "CaseFile.h"
#include "DataFile.h"
#include "Mesh.h"
#include "MeshReader.h"
#include "Results.h"
#include "StepFiles.h"

#include <exchange/Error.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace EnSight {

namespace {

using Exchange::AttributeList;
using Exchange::Error;
using Exchange::Field;
using Exchange::Part;
using Exchange::Report;
using Exchange::StepInfo;

template <typename Value>
std::size_t hashOf(std::vector<Value> const& values)
{
    // NOLINTNEXTLINE(bugprone-sizeof-expression): types of elements are known by their addresses
    std::size_t const size = values.size() * sizeof(Value);
    return std::hash<std::string_view>()({reinterpret_cast<char const*>(values.data()), size});
}

/// What tells whether a later step has the same elements, without keeping them.
std::vector<std::size_t> fingerprintOf(MeshPart const& part)
{
    return {part.nodeCount,          part.elementCount,         hashOf(part.sharedNodes),
            hashOf(part.part.types), hashOf(part.part.offsets), hashOf(part.part.connectivity)};
}

/// The model, or the measured points: a mesh with variables of its own.
class Body
{
public:
    Body(CaseFile const& description, CaseFile::Mesh const& mesh, bool isMeasured, Report& report)
        : isMeasured_(isMeasured), case_(description), description_(mesh), report_(report),
          files_(description, mesh.files, true)
    {
        // Files of measured points keep the layout that EnSight 6 has, in Gold cases, too.
        std::size_t const first = mesh.stepOfElements.value_or(0);
        encoding_ = DataFile::encodingOf(description.placeOf(mesh.files, first).path,
                                         description.isGold() && !isMeasured);
    }

    bool isMeasured() const { return isMeasured_; }
    Mesh const& mesh() const { return mesh_; }
    std::size_t firstPart() const { return firstPart_; }
    DataFile::Encoding& encoding() { return encoding_; }

    void takePartsTo(std::vector<Part>& parts)
    {
        firstPart_ = parts.size();
        step_ = description_.stepOfElements.value_or(0);
        mesh_ = readInEitherOrder(step_);
        for (MeshPart& part : mesh_.parts) {
            fingerprints_.push_back(fingerprintOf(part));
            coordinates_.push_back(hashOf(part.part.coordinates));
            parts.push_back(std::move(part.part));
            part.part = Part();
        }
        mesh_.sharedCoordinates = {};
    }

    /// Hands over coordinates that are not those of the mesh that was read first.
    void visitMotion(std::size_t step, Exchange::Source::FieldVisitor const& visit)
    {
        std::size_t const now = case_.latestStepAt(description_.files.timeSet, step);
        if (now == step_)
            return;
        // The first reading of the mesh has reported all that is to be told of its elements.
        Report ignored;
        ignored.skipUnknown = true;
        Mesh mesh = read(now, ignored);
        for (std::size_t i = 0; i < mesh_.parts.size(); ++i) {
            Field field;
            field.name = "Coordinates";
            field.part = firstPart_ + i;
            field.components = axes;
            field.movesNodes = true;
            auto coordinates = coordinatesIn(mesh, i);
            if (hashOf(coordinates) == coordinates_[i])
                continue;
            field.values = std::move(coordinates);
            visit(field);
        }
    }

private:
    /// The first number may tell the wrong order of bytes.
    Mesh readInEitherOrder(std::size_t step)
    {
        try {
            return read(step, report_);
        } catch (Error const&) {
            if (encoding_.format != DataFile::Format::C)
                throw;
            auto const first = std::current_exception();
            return readInOtherOrder(step, first);
        }
    }

    Mesh readInOtherOrder(std::size_t step, std::exception_ptr const& first)
    {
        for (auto const order : {DataFile::ByteOrder::Little, DataFile::ByteOrder::Big}) {
            try {
                encoding_.order = order;
                files_.forget();
                return read(step, report_);
            } catch (Error const&) {
                continue;
            }
        }
        std::rethrow_exception(first);
    }

    Mesh read(std::size_t step, Report& report)
    {
        bool const hasElements = step == description_.stepOfElements.value_or(step);
        Mesh mesh;
        files_.read(step, encoding_, [&](DataFile& file) {
            MeshReader reader(file, case_.bytesOfVariables(), report);
            mesh = isMeasured_ ? reader.readMeasured() : reader.read(hasElements);
        });
        return mesh;
    }

    std::vector<double> coordinatesIn(Mesh& mesh, std::size_t index) const
    {
        MeshPart const& part = mesh_.parts[index];
        bool const haveElements = !description_.stepOfElements;
        if (haveElements)
            requireSameElements(mesh, index);
        if (part.sharedNodes.empty() || part.nodeCount > 0) {
            auto const found = mesh.indices.find(part.number);
            if (found == mesh.indices.end() ||
                mesh.parts[found->second].nodeCount != part.nodeCount)
                raiseChange(mesh);
            return std::move(mesh.parts[found->second].part.coordinates);
        }
        if (mesh.sharedNodeCount != mesh_.sharedNodeCount)
            raiseChange(mesh);
        std::vector<double> coordinates;
        coordinates.reserve(axes * part.sharedNodes.size());
        for (std::uint32_t const node : part.sharedNodes)
            for (std::size_t axis = 0; axis < axes; ++axis)
                coordinates.push_back(
                    static_cast<double>(mesh.sharedCoordinates[axes * node + axis]));
        return coordinates;
    }

    void requireSameElements(Mesh const& mesh, std::size_t index) const
    {
        if (mesh.parts.size() != mesh_.parts.size() ||
            mesh.parts[index].number != mesh_.parts[index].number ||
            fingerprintOf(mesh.parts[index]) != fingerprints_[index])
            raiseChange(mesh);
    }

    [[noreturn]] static void raiseChange(Mesh const& mesh)
    {
        throw Error("The mesh changes from step to step, which a model cannot hold: that in '" +
                    mesh.path.string() + "' is another one.");
    }

    bool isMeasured_;
    CaseFile const& case_;
    CaseFile::Mesh const& description_;
    Report& report_;
    StepFiles files_;
    DataFile::Encoding encoding_;
    std::size_t firstPart_ = 0;
    std::size_t step_ = 0;
    /// What is needed to read values on the mesh; its arrays were handed over with the parts.
    Mesh mesh_;
    std::vector<std::vector<std::size_t>> fingerprints_;
    std::vector<std::size_t> coordinates_;
};

class Source final : public Exchange::Source
{
public:
    Source(std::filesystem::path const& path, Report& report) : report_(report), case_(path, report)
    {
        if (case_.model())
            bodies_.emplace_back(case_, *case_.model(), false, report_);
        if (case_.measured())
            bodies_.emplace_back(case_, *case_.measured(), true, report_);
        for (CaseFile::Variable const& variable : case_.variables())
            files_.emplace_back(case_, variable.files, false);
    }

    AttributeList attributes() const override
    {
        return case_.times().empty() ? constantsAt(0) : AttributeList();
    }

    std::vector<Part> readParts() override
    {
        std::vector<Part> parts;
        for (Body& body : bodies_)
            body.takePartsTo(parts);
        return parts;
    }

    std::size_t stepCount() const override
    {
        return std::max<std::size_t>(1, case_.times().size());
    }

    StepInfo step(std::size_t index) const override
    {
        if (case_.times().empty())
            return {};
        StepInfo info;
        info.name = "Step " + std::to_string(index + 1);
        info.time = case_.times()[index];
        info.attributes = constantsAt(index);
        return info;
    }

    void readStep(std::size_t index, FieldVisitor const& visit) override
    {
        for (Body& body : bodies_)
            body.visitMotion(index, visit);
        for (std::size_t i = 0; i < files_.size(); ++i)
            readVariable(i, index, visit);
        if (index + 1 == stepCount())
            tellOfLoneEnds();
    }

private:
    AttributeList constantsAt(std::size_t step) const
    {
        AttributeList attributes;
        for (CaseFile::Constant const& constant : case_.constants())
            if (auto const index = case_.stepAt(constant.timeSet, step))
                attributes.emplace_back(constant.name, report_.narrow(constant.values[*index]));
        return attributes;
    }

    void readVariable(std::size_t index, std::size_t step, FieldVisitor const& visit)
    {
        CaseFile::Variable const& variable = case_.variables()[index];
        auto const body = std::find_if(bodies_.begin(), bodies_.end(), [&](Body const& each) {
            return each.isMeasured() == variable.isMeasured;
        });
        if (body == bodies_.end())
            throw Error("The case has no mesh for the variable '" + variable.name + "'.");
        auto const stepOfSeries = case_.stepAt(variable.files.timeSet, step);
        if (!stepOfSeries)
            return;
        files_[index].read(*stepOfSeries, body->encoding(), [&](DataFile& file) {
            Results results(file, body->mesh(), body->firstPart(), variable);
            results.read(visit);
            if (auto const part = results.partAtEarlyEnd())
                filesThatEndEarly_[*part].insert(file.path());
        });
    }

    /// A variable need not have values of all parts. Where one file alone ends before the last of
    /// them it may have been cut off, too: a variable of some parts often has more files.
    void tellOfLoneEnds() const
    {
        for (auto const& [part, files] : filesThatEndEarly_)
            if (files.size() == 1)
                report_.warn("The file '" + files.begin()->string() +
                             "' has no values of the last parts, or was cut off behind a part.");
    }

    Report& report_;
    CaseFile case_;
    std::deque<Body> bodies_;
    /// The files of each variable, in the order of `case_.variables()`.
    std::vector<StepFiles> files_;
    std::map<std::int64_t, std::set<std::filesystem::path>> filesThatEndEarly_;
};

} // namespace

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Report& report)
{
    return std::make_unique<Source>(path, report);
}

} // namespace EnSight
