#ifndef TESTS_VTKREAD_ENSIGHTMODELFILES_H
#define TESTS_VTKREAD_ENSIGHTMODELFILES_H

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
    using Elements = EnSightModel::Elements;
    using Part = EnSightModel::Part;
    using Reals = EnSightModel::Reals;
    using Variable = EnSightModel::Variable;

    std::string caseText() const;
    std::string caseLine(Variable const& variable) const;
    std::string timeSections() const;
    std::string sets() const;

    EnSightEncoder mesh(std::size_t step) const;
    void addSharedNodes(EnSightEncoder& file, std::size_t step) const;
    void addStructured(EnSightEncoder& file, Part const& part, std::size_t step) const;
    void addUnstructured(EnSightEncoder& file, Part const& part, std::size_t step) const;
    void addElements(EnSightEncoder& file, Elements const& elements, int firstId) const;
    void addConnectivity(EnSightEncoder& file, Elements const& elements) const;
    void addRowsWithIds(EnSightEncoder& file, Elements const& elements, int firstId) const;
    int firstNodeId() const;

    EnSightEncoder values(Variable const& variable, std::size_t step) const;
    void addValues(EnSightEncoder& file, Variable const& variable, Part const& part,
                   Reals const& values) const;
    void addSection(EnSightEncoder& file, Variable const& variable, std::string const& keyword,
                    Reals const& rows) const;

    EnSightEncoder seriesOf(std::function<EnSightEncoder(std::size_t)> const& contentOf) const;
    EnSightEncoder empty() const { return {model_.format, model_.isGold}; }

    EnSightModel const& model_;
};

#endif
