#ifndef EXCHANGE_MODELWRITER_H
#define EXCHANGE_MODELWRITER_H

#include "FieldWriter.h"
#include "MeshWriter.h"
#include "Part.h"
#include "Report.h"
#include "StepInfo.h"

#include "common/UniqueNames.h"

#include <Zyl2/Mox2/Model.h>

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Exchange {

/// Writes what a source holds into a model: a root group, groups as the source nests its parts, and
/// one or more shapes for each part, with the fields of all steps on them.
class ModelWriter
{
public:
    struct Signature
    {
        /// Name of the program that writes, for the model's writing record.
        std::string application;
        /// Name of the result file, without its folder.
        std::string sourceName;
        /// Name of the root group.
        std::string rootName;
    };

    /// Creates the model at `path`, in place of what is there.
    ModelWriter(std::filesystem::path const& path, Signature const& signature,
                AttributeList const& attributes, Report& report);

    /// Closes what is open; failures don't matter any more, since `close` was not reached.
    ~ModelWriter();

    ModelWriter(ModelWriter const&) = delete;
    ModelWriter& operator=(ModelWriter const&) = delete;

    /// The part itself isn't needed afterwards.
    void addPart(Part const& part);

    /// Begins a step, or goes on with one; what `addField` gets from now on belongs to it. All
    /// parts must be there.
    void startStep(StepInfo const& step);
    void addField(Field const& field);

    /// Finishes the file.
    void close();

    std::size_t nodeCount() const { return nodeCount_; }
    std::size_t elementCount() const { return elementCount_; }
    /// How many steps that have a name were written.
    std::size_t stepCount() const { return static_cast<std::size_t>(stepCount_); }
    std::size_t fieldCount() const { return fields_.fieldCount(); }

private:
    using GroupPath = std::vector<std::string>;
    struct Group
    {
        unsigned int id = 0;
        Common::UniqueNames children;
    };
    struct WrittenStep
    {
        std::string name;
        int number;
    };

    Group& groupAt(GroupPath const& path);
    WrittenShape addShape(Group& group, Part const& part, Shape const& shape);
    void addSets(Part const& part, WrittenPart const& written);
    void addSet(NamedSet const& set, Location location, WrittenPart const& written);
    WrittenStep writtenStep(StepInfo const& step);
    WrittenStep newStep(std::string const& name);

    Report& report_;
    Zyl2::Mox2::Model model_;
    DatasetWriter writer_;
    MeshWriter mesh_;
    FieldWriter fields_;
    std::map<GroupPath, Group> groups_;
    std::vector<WrittenPart> parts_;
    Common::UniqueNames stepNames_;
    /// The steps that the source may go on with, by its name for them.
    std::map<std::string, WrittenStep> openSteps_;
    int stepCount_ = 0;
    std::size_t nodeCount_ = 0;
    std::size_t elementCount_ = 0;
};

} // namespace Exchange

#endif
