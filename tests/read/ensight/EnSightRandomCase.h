#ifndef TESTS_READ_ENSIGHT_ENSIGHTRANDOMCASE_H
#define TESTS_READ_ENSIGHT_ENSIGHTRANDOMCASE_H

#include "EnSightModel.h"
#include "read/vtk/RandomPicks.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// Makes up what a case of EnSight holds. Every number is another one.
class EnSightRandomCase
{
public:
    /// What a case may have.
    struct Features
    {
        bool ids = true;
        bool structuredParts = true;
        bool secondOrderElements = true;
        bool emptyBlocks = true;
        bool severalStepsPerFile = true;
        bool timeSetsOfSomeSteps = true;
        bool movingMeshes = true;
        bool complexVariables = true;
        bool measuredPoints = true;
        bool blankedNodes = true;
        bool gaps = true;
    };

    EnSightRandomCase(EnSightModel::Format format, bool isGold, Features const& features,
                      std::uint32_t seed);

    EnSightModel const& model() const { return model_; }

private:
    using Part = EnSightModel::Part;
    using Reals = EnSightModel::Reals;
    using Variable = EnSightModel::Variable;

    void makeSteps();
    void makeIds();
    void makeParts();
    Part part(int number, bool isStructured);
    void makeStructured(Part& part);
    EnSightModel::Nodes blankingMarks(std::size_t count);
    Reals gridCoordinates(Part const& part);
    static Reals lattice(std::array<Reals, 3> const& axes);
    std::array<Reals, 3> axesOf(Part const& part);
    Reals coordinatesOf(Part const& part, std::size_t step);
    void makeUnstructured(Part& part);
    EnSightModel::Elements elements(std::string const& type, std::size_t nodesOfPart);
    void makeVariable(std::string const& name);
    std::size_t timeSet();
    std::vector<Reals> valuesOfParts(Variable const& variable, std::vector<bool> const& haveValues);
    std::vector<bool> partsWithValues(Variable const& variable);
    Reals valuesOf(Variable const& variable, Part const& part);
    void makeMeasured();
    void makeGaps(Variable const& variable, Reals& values);
    void shareValues(std::vector<Reals>& values) const;
    Reals reals(std::size_t count);
    float real();

    Features features_;
    RandomPicks picks_;
    EnSightModel model_;
    std::size_t sharedNodes_ = 0;
    /// Of each step.
    std::vector<Reals> sharedCoordinates_;
    int latestReal_ = 0;
};

#endif
