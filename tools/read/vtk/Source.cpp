#include "Source.h"

#include "Blocks.h"
#include "CgnsBoundaries.h"
#include "Fingerprint.h"
#include "Input.h"
#include "MeshReader.h"
#include "Readers.h"
#include "Results.h"
#include "SilencedStreams.h"
#include "SourceAttributes.h"
#include "StepName.h"

#include <exchange/Error.h>
#include <vtk/Messages.h>

#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <new>
#include <set>
#include <utility>

namespace VtkRead {

namespace {

using Exchange::AttributeList;
using Exchange::Error;
using Exchange::Field;
using Exchange::Part;
using Exchange::Report;
using Exchange::StepInfo;

/// Some readers only warn when values are missing or aren't what they should be.
bool tellsOfDamage(std::string const& warning)
{
    std::string lower = warning;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (char const* const word : {"error", "mismatch", "premature", "end of file", "too short",
                                   "truncated", "could not", "cannot", "can't", "unable", "failed"})
        if (lower.find(word) != std::string::npos)
            return true;
    return false;
}

/// Runs one of VTK's readers: whatever goes wrong in it becomes an `Error`, and nothing is printed.
template <typename Action>
auto guarded(Report& report, Action const& action)
{
    SilencedStreams const silence;
    Vtk::Messages const messages(tellsOfDamage);
    try {
        auto result = action();
        messages.raiseError<Error>();
        for (std::string const& warning : messages.warnings())
            report.warn("VTK says: " + warning + ".");
        return result;
    } catch (Error const&) {
        messages.raiseError<Error>();
        throw;
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const& error) {
        throw Error(std::string("VTK can't read the file: ") + error.what() + ".");
    }
}

bool hasCellTypes(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);)
        if (line.rfind("CELL_TYPES", 0) == 0)
            return true;
    return false;
}

/// VTK's reader of CGNS makes wedges of the nodes as they are in the file, which is the order of a
/// model's elements; the cells are inside out.
PointOrder orderOf(FileKind kind)
{
    return kind == FileKind::Cgns ? PointOrder::Element : PointOrder::Cell;
}

class Source final : public Exchange::Source
{
public:
    Source(FileKind kind, std::filesystem::path const& path, Report& report)
        : report_(report), order_(orderOf(kind))
    {
        guarded(report_, [&] {
            input_ = openInput(kind, path);
            return 0;
        });
        // VTK crashes on some of the files that are refused for their boundaries.
        if (kind == FileKind::Cgns)
            reportBoundaries(path, report_);
        load(0);
        if (kind == FileKind::Legacy)
            requireCells(path);
        rememberMesh();
        if (input_->times().empty())
            timeOfOnlyStep_ = timeIn(object_);
        rememberStepNames();
    }

    AttributeList attributes() const override
    {
        // Field data of a mesh that stands alone becomes attributes of its part; in a series, it
        // becomes attributes of the steps.
        return isSeries() || isSingleMesh()
                   ? AttributeList()
                   : withoutStepName(attributesIn(object_, report_), nameOfStep(0));
    }

    std::vector<Part> readParts() override
    {
        std::vector<Part> parts;
        kept_.resize(blocks_.size());
        for (std::size_t i = 0; i < blocks_.size(); ++i) {
            parts.push_back(readMesh(blocks_[i], kept_[i], order_, report_));
            if (!isSeries())
                parts.back().attributes =
                    withoutStepName(attributesIn(blocks_[i].data, report_), nameOfStep(0));
        }
        return parts;
    }

    std::size_t stepCount() const override
    {
        return std::max<std::size_t>(1, input_->times().size());
    }

    StepInfo step(std::size_t index) const override
    {
        if (!hasTime())
            return {};
        std::string const name = nameOfStep(index);
        return {name.empty() ? "Step " + std::to_string(index + 1) : name, timeOf(index),
                withoutStepName(saidOfStep_, name)};
    }

    void readStep(std::size_t index, FieldVisitor const& visit) override
    {
        checkMesh();
        for (std::size_t i = 0; i < blocks_.size(); ++i)
            if (blocks_[i].data != nullptr)
                visitBlock(i, visit);
        release();
        // The next step's name and attributes are asked for before its fields, and come from it.
        if (index + 1 < stepCount())
            load(index + 1);
    }

private:
    bool isSeries() const { return stepCount() > 1; }
    bool isSingleMesh() const { return vtkDataSet::SafeDownCast(object_) != nullptr; }
    bool hasTime() const { return !input_->times().empty() || timeOfOnlyStep_; }

    std::optional<double> timeOf(std::size_t step) const
    {
        return input_->times().empty() ? timeOfOnlyStep_ : input_->times()[step];
    }

    /// Empty where steps are counted.
    std::string nameOfStep(std::size_t step) const
    {
        return stepNames_.empty() ? std::string() : stepNames_[step];
    }

    void load(std::size_t step)
    {
        object_ = guarded(report_, [&] { return input_->read(step); });
        if (object_ == nullptr)
            throw Error("VTK makes nothing of the file.");
        blocks_ = blocksOf(object_);
        if (isSeries())
            saidOfStep_ = stepAttributes(object_, blocks_, report_);
    }

    /// Steps are called what the source calls them if it does so for all of them, and never for two
    /// alike.
    void rememberStepNames()
    {
        std::string const first = stepNameAmong(isSeries() ? saidOfStep_ : saidOfOnlyStep());
        if (first.empty() || !hasTime())
            return;
        stepNames_ = {first};
        for (std::size_t i = 1; i < stepCount(); ++i)
            stepNames_.push_back(guarded(report_, [&] { return input_->stepName(i); }));
        std::set<std::string> const different(stepNames_.begin(), stepNames_.end());
        if (different.size() < stepNames_.size() || different.count("") != 0)
            stepNames_.clear();
    }

    AttributeList saidOfOnlyStep() const
    {
        Report ignored;
        return stepAttributes(object_, blocks_, ignored);
    }

    /// The reader takes a file for whole that ends before its cells.
    void requireCells(std::filesystem::path const& path) const
    {
        auto* const grid = vtkUnstructuredGrid::SafeDownCast(object_);
        if (grid != nullptr && grid->GetNumberOfCells() == 0 && !hasCellTypes(path))
            throw Error("The file ends before its cells.");
    }

    void release()
    {
        blocks_.clear();
        object_ = nullptr;
    }

    void rememberMesh()
    {
        for (Block const& block : blocks_) {
            names_.push_back(nameOf(block));
            if (isSeries())
                mesh_.push_back(Fingerprint::of(block.data));
        }
    }

    static std::vector<std::string> nameOf(Block const& block)
    {
        std::vector<std::string> name = block.groups;
        name.push_back(block.name);
        return name;
    }

    void checkMesh() const
    {
        if (blocks_.size() != names_.size())
            raiseChange();
        for (std::size_t i = 0; i < blocks_.size(); ++i)
            if (nameOf(blocks_[i]) != names_[i])
                raiseChange();
    }

    [[noreturn]] static void raiseChange()
    {
        throw Error("The mesh changes from step to step, which a model cannot hold.");
    }

    void visitBlock(std::size_t index, FieldVisitor const& visit)
    {
        vtkDataSet& data = *blocks_[index].data;
        if (isSeries())
            visitMotion(index, data, visit);
        visitFields(data, index, kept_[index], visit, report_);
    }

    void visitMotion(std::size_t index, vtkDataSet& data, FieldVisitor const& visit)
    {
        Fingerprint const now = Fingerprint::of(&data);
        if (now.cells != mesh_[index].cells)
            raiseChange();
        if (now.coordinates == mesh_[index].coordinates)
            return;
        Field field;
        field.name = "Coordinates";
        field.part = index;
        field.components = 3;
        field.movesNodes = true;
        field.values = pointsOf(data, kept_[index].points);
        visit(field);
    }

    Report& report_;
    std::unique_ptr<Input> input_;
    vtkSmartPointer<vtkDataObject> object_;
    PointOrder order_;
    std::vector<Block> blocks_;
    std::vector<PartRows> kept_;
    /// Names of the first step's blocks, which all steps have to have.
    std::vector<std::vector<std::string>> names_;
    std::vector<Fingerprint> mesh_;
    std::optional<double> timeOfOnlyStep_;
    /// What is said of the step that was read last, where there are several.
    AttributeList saidOfStep_;
    std::vector<std::string> stepNames_;
};

} // namespace

std::unique_ptr<Exchange::Source> open(FileKind kind, std::filesystem::path const& path,
                                       Report& report)
{
    return std::make_unique<Source>(kind, path, report);
}

} // namespace VtkRead
