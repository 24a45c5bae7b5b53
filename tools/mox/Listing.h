#ifndef MOX_LISTING_H
#define MOX_LISTING_H

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
    void printNode(std::ostream& out, MoxRead::Node const& node, std::string const& indent) const;
    void printVariable(std::ostream& out, MoxRead::Variable const& variable,
                       std::string const& indent) const;
    void printHeavyData(std::ostream& out) const;

    MoxRead::Model const& model_;
    std::unordered_map<MoxRead::Variable const*, std::string> ranges_;
};

#endif
