#ifndef TESTS_READ_ENSIGHT_ENSIGHTMODELFILES_H
#define TESTS_READ_ENSIGHT_ENSIGHTMODELFILES_H

#include "EnSightModel.h"

#include "support/Folder.h"

#include <filesystem>
#include <functional>
#include <string>

/// Writes the files of a case of EnSight.
class EnSightModelFiles
{
public:
    explicit EnSightModelFiles(EnSightModel const& model) : model_(model) {}

    /// \return the case's file
    std::filesystem::path writeTo(Support::Folder const& folder) const;

private:
    /// Of a step.
    using Content = std::function<EnSightEncoder(std::size_t)>;
    using Elements = EnSightModel::Elements;
    using Part = EnSightModel::Part;
    using Reals = EnSightModel::Reals;
    using Variable = EnSightModel::Variable;

    bool hasFilePerStep(std::size_t timeSet) const;
    bool isSeries() const;
    void writeSteps(Support::Folder const& folder, std::string const& name, std::size_t timeSet,
                    Content const& contentOf) const;
    std::size_t fileNumber(std::size_t index) const;
    std::string fileName(std::string const& name, std::size_t index) const;

    std::string caseText() const;
    std::string caseLine(Variable const& variable) const;
    std::string fileOf(std::string const& name, std::size_t timeSet) const;
    std::string sets(std::size_t timeSet) const;
    std::string timeSection(std::size_t timeSet) const;
    std::string numbering(std::size_t count) const;

    EnSightEncoder mesh(std::size_t step) const;
    EnSightEncoder measured(Part const& part, std::size_t step) const;
    void addSharedNodes(EnSightEncoder& file, std::size_t step) const;
    void addStructured(EnSightEncoder& file, Part const& part, std::size_t step) const;
    void addUnstructured(EnSightEncoder& file, Part const& part, std::size_t step) const;
    void addElements(EnSightEncoder& file, Elements const& elements, int firstId) const;
    void addConnectivity(EnSightEncoder& file, Elements const& elements) const;
    void addRowsWithIds(EnSightEncoder& file, Elements const& elements, int firstId) const;
    int firstNodeId() const;

    EnSightEncoder measuredValues(Variable const& variable, std::size_t step) const;
    EnSightEncoder values(Variable const& variable, std::size_t step) const;
    void addValues(EnSightEncoder& file, Variable const& variable, Part const& part,
                   Reals const& values) const;
    void addSection(EnSightEncoder& file, Variable const& variable, std::string const& keyword,
                    Reals const& rows) const;

    EnSightEncoder seriesOf(std::size_t timeSet, Content const& contentOf) const;
    EnSightEncoder empty() const { return {model_.format, model_.isGold}; }
    /// Measured points are written as before Gold.
    EnSightEncoder emptyOfMeasured() const { return {model_.format, false}; }

    EnSightModel const& model_;
};

#endif
