#include "Source.h"

#include "Blocks.h"
#include "Fields.h"
#include "Fingerprint.h"
#include "Input.h"
#include "Mesh.h"
#include "Messages.h"
#include "Readers.h"

#include <exchange/Error.h>

#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <fstream>
#include <new>
#include <utility>

namespace VtkRead {

namespace {

using Exchange::AttributeList;
using Exchange::Error;
using Exchange::Field;
using Exchange::Part;
using Exchange::Report;
using Exchange::StepInfo;

/// Runs one of VTK's readers: whatever goes wrong in it becomes an `Error`, and nothing is printed.
template <typename Action>
auto guarded(Report& report, Action const& action)
{
    Messages const messages;
    try {
        auto result = action();
        messages.raiseError();
        for (std::string const& warning : messages.warnings())
            report.warn("VTK says: " + warning + ".");
        return result;
    } catch (Error const&) {
        messages.raiseError();
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

class DataSource : public Exchange::Source
{
public:
    DataSource(FileKind kind, std::filesystem::path const& path, Report& report) : report_(report)
    {
        guarded(report_, [&] {
            input_ = openInput(kind, path);
            return 0;
        });
        load(0);
        if (kind == FileKind::Legacy)
            requireCells(path);
        rememberMesh();
        if (input_->times().empty())
            timeOfOnlyStep_ = timeIn(object_);
    }

    AttributeList attributes() const override
    {
        // Of a mesh that stands alone, they are the part's.
        return isSeries() || isSingleMesh() ? AttributeList() : attributesIn(object_, report_);
    }

    std::vector<Part> readParts() override
    {
        std::vector<Part> parts;
        kept_.resize(blocks_.size());
        for (std::size_t i = 0; i < blocks_.size(); ++i) {
            parts.push_back(readMesh(blocks_[i], kept_[i], report_));
            if (!isSeries())
                parts.back().attributes = attributesIn(blocks_[i].data, report_);
        }
        return parts;
    }

    std::size_t stepCount() const override
    {
        return std::max<std::size_t>(1, input_->times().size());
    }

    StepInfo step(std::size_t index) const override
    {
        std::string const name = "Step " + std::to_string(index + 1);
        if (!input_->times().empty())
            return {name, input_->times()[index], {}};
        return timeOfOnlyStep_ ? StepInfo{name, timeOfOnlyStep_, {}} : StepInfo{};
    }

    void readStep(std::size_t index, FieldVisitor const& visit) override
    {
        if (index > 0)
            load(index);
        checkMesh();
        for (std::size_t i = 0; i < blocks_.size(); ++i)
            if (blocks_[i].data != nullptr)
                visitBlock(i, visit);
        release();
    }

private:
    bool isSeries() const { return stepCount() > 1; }
    bool isSingleMesh() const { return vtkDataSet::SafeDownCast(object_) != nullptr; }

    void load(std::size_t step)
    {
        object_ = guarded(report_, [&] { return input_->read(step); });
        if (object_ == nullptr)
            throw Error("VTK makes nothing of the file.");
        blocks_ = blocksOf(object_);
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
    std::vector<Block> blocks_;
    std::vector<KeptRows> kept_;
    /// What the first step has.
    std::vector<std::vector<std::string>> names_;
    std::vector<Fingerprint> mesh_;
    std::optional<double> timeOfOnlyStep_;
};

} // namespace

std::unique_ptr<Exchange::Source> open(FileKind kind, std::filesystem::path const& path,
                                       Report& report)
{
    return std::make_unique<DataSource>(kind, path, report);
}

} // namespace VtkRead
