#pragma once

#include "moxread/Model.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <unordered_map>

/// What a model contains, as text for people.
class Listing
{
public:
    /// Reads the values of all datasets, one block at a time, to know their ranges.
    explicit Listing(MoxRead::Model& model);

    void print(std::ostream& out) const;

private:
    void printSummary(std::ostream& out) const;
    void printWritings(std::ostream& out) const;
    void printTree(std::ostream& out) const;
    void printNode(std::ostream& out, const MoxRead::Node& node, const std::string& indent) const;
    void printVariable(std::ostream& out, const MoxRead::Variable& variable,
                       const std::string& indent) const;
    void printHeavyData(std::ostream& out) const;

    const MoxRead::Model& model_;
    std::unordered_map<const MoxRead::Variable*, std::string> ranges_;
};
