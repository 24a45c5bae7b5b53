#ifndef TESTS_READ_ENSIGHT_RANDOMCASE_H
#define TESTS_READ_ENSIGHT_RANDOMCASE_H

#include "Model.h"

#include "support/RandomPicks.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// Makes up what a case of EnSight holds. Every number is another one.
class RandomCase
{
public:
    RandomCase(Model::Format format, bool isGold, std::uint32_t seed);

    Model const& model() const { return model_; }

private:
    using Part = Model::Part;
    using Reals = Model::Reals;
    using Variable = Model::Variable;

    void makeSteps();
    void makeIds();
    void makeParts();
    Part part(int number, bool isStructured);
    void makeStructured(Part& part);
    Model::Nodes marks(std::size_t count, int usual, int other);
    Reals gridCoordinates(Part const& part);
    static Reals lattice(std::array<Reals, 3> const& axes);
    std::array<Reals, 3> axesOf(Part const& part);
    Reals coordinatesOf(Part const& part, std::size_t step);
    void makeUnstructured(Part& part);
    Model::Elements elements(std::string const& type, std::size_t nodesOfPart);
    Model::Nodes nodes(std::size_t count, std::size_t nodesOfPart);
    void makeVariable(std::string const& name);
    std::size_t timeSet();
    std::vector<Reals> valuesOfParts(Variable const& variable, std::vector<bool> const& haveValues);
    std::vector<bool> partsWithValues(Variable const& variable);
    Reals valuesOf(Variable const& variable, Part const& part);
    void makeMeasured();
    void makeConstants();
    void makeGaps(Variable const& variable, Reals& values);
    void shareValues(std::vector<Reals>& values) const;
    Reals reals(std::size_t count);
    float real();

    Support::RandomPicks picks_;
    Model model_;
    std::size_t sharedNodes_ = 0;
    /// Of each step.
    std::vector<Reals> sharedCoordinates_;
    int latestReal_ = 0;
};

#endif
