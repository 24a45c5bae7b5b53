#ifndef MOX_PRINT_JSONLISTING_H
#define MOX_PRINT_JSONLISTING_H

#include "JsonWriter.h"
#include "ModelContents.h"

#include "moxread/GlobalInformation.h"

#include <string>
#include <vector>

namespace Mox {

/// What a model contains, as JSON. Nodes stand in one list, however deep the tree is; each names
/// its parent.
class JsonListing
{
public:
    /// \param state of a file that is not whole, in words; null for one that is
    JsonListing(ModelContents const& contents, std::string file,
                std::string const* state = nullptr);

    void print(std::ostream& out) const;

private:
    void writeFile(JsonWriter& json) const;
    void writeNodes(JsonWriter& json) const;
    void writeNode(JsonWriter& json, MoxRead::Node const& node) const;
    void writeDatasets(JsonWriter& json, MoxRead::Geometry const& geometry) const;
    void writeDataset(JsonWriter& json, MoxRead::Variable const& variable) const;
    void writeLink(JsonWriter& json, MoxRead::Variable const& variable) const;
    void writeSteps(JsonWriter& json) const;
    void writeHeavyData(JsonWriter& json) const;

    ModelContents const& contents_;
    MoxRead::Model const& model_;
    std::string file_;
    std::string const* state_;
};

/// The member "writings": who wrote the file, and when.
void writeWritings(JsonWriter& json, std::vector<MoxRead::WritingRecord> const& writings);

/// The members "dataset" and "step", which is null for a dataset without step.
void writeDatasetName(JsonWriter& json, MoxRead::Variable const& variable);

} // namespace Mox

#endif
