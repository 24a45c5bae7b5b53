#ifndef TESTS_READ_ENSIGHT_MODELFILES_H
#define TESTS_READ_ENSIGHT_MODELFILES_H

#include "Model.h"

#include "support/Folder.h"

#include <filesystem>
#include <functional>
#include <string>

/// Writes the files of a case of EnSight.
class ModelFiles
{
public:
    explicit ModelFiles(Model const& model) : model_(model) {}

    /// \return the case's file
    std::filesystem::path writeTo(Support::Folder const& folder) const;

private:
    /// Of a step.
    using Content = std::function<Encoder(std::size_t)>;
    using Elements = Model::Elements;
    using Part = Model::Part;
    using Reals = Model::Reals;
    using Variable = Model::Variable;

    bool hasFilePerStep(std::size_t timeSet) const;
    void writeSteps(Support::Folder const& folder, std::string const& name, std::size_t timeSet,
                    Content const& contentOf) const;
    std::size_t fileNumber(std::size_t index) const;
    std::string fileName(std::string const& name, std::size_t index) const;

    std::string caseText() const;
    std::string caseLine(Variable const& variable) const;
    static std::string caseLine(Model::Constant const& constant);
    std::string fileSection(std::size_t timeSet) const;
    std::string fileOf(std::string const& name, std::size_t timeSet) const;
    std::string sets(std::size_t timeSet) const;
    std::string timeSection(std::size_t timeSet) const;
    std::string numbering(std::size_t count) const;

    Encoder mesh(std::size_t step) const;
    Encoder measured(Part const& part, std::size_t step) const;
    static void addExtents(Encoder& file);
    void addSharedNodes(Encoder& file, std::size_t step) const;
    void addStructured(Encoder& file, Part const& part, std::size_t step) const;
    void addUnstructured(Encoder& file, Part const& part, std::size_t step) const;
    void addElements(Encoder& file, Elements const& elements, std::size_t first,
                     std::size_t nodeCount) const;
    std::vector<int> nodeIdsOf(std::size_t count) const;
    static std::vector<int> elementIdsFrom(std::size_t first, std::size_t count);

    Encoder measuredValues(Variable const& variable, std::size_t step) const;
    Encoder values(Variable const& variable, std::size_t step) const;
    void addValues(Encoder& file, Variable const& variable, Part const& part,
                   Reals const& values) const;
    void addSection(Encoder& file, Variable const& variable, std::string const& keyword,
                    Reals const& rows) const;

    std::string seriesOf(std::vector<std::size_t> const& steps, Content const& contentOf) const;
    Encoder empty() const { return {model_.format, model_.isGold, model_.isBigEndian}; }
    /// Measured points are written as before Gold.
    Encoder emptyOfMeasured() const { return {model_.format, false, model_.isBigEndian}; }

    Model const& model_;
};

#endif
