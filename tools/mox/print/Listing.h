#ifndef MOX_PRINT_LISTING_H
#define MOX_PRINT_LISTING_H

#include "ModelContents.h"

#include "moxread/GlobalInformation.h"

#include <ostream>
#include <string>
#include <vector>

namespace Mox {

/// What a model contains, as text for people.
class Listing
{
public:
    /// \param state of a file that is not whole, in words; null for one that is
    explicit Listing(ModelContents const& contents, std::string const* state = nullptr);

    /// Lists the whole model, and what is known about its file.
    void print(std::ostream& out) const;

private:
    void printSummary(std::ostream& out) const;
    void printTree(std::ostream& out) const;
    void printNode(std::ostream& out, MoxRead::Node const& node, std::string const& indent) const;
    void printVariable(std::ostream& out, MoxRead::Variable const& variable,
                       std::string const& indent) const;
    void printSteps(std::ostream& out) const;
    void printHeavyData(std::ostream& out) const;

    ModelContents const& contents_;
    MoxRead::Model const& model_;
    std::string const* state_;
};

/// Who wrote the file, and when: a line for each time.
void printWritings(std::ostream& out, std::vector<MoxRead::WritingRecord> const& writings);

} // namespace Mox

#endif
