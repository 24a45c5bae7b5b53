#ifndef READ_ENSIGHT_RESULTS_H
#define READ_ENSIGHT_RESULTS_H

#include "CaseFile.h"
#include "DataFile.h"
#include "Mesh.h"

#include <exchange/Source.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace EnSight {

/// Reads one step of a variable, which has values of some parts of a mesh.
class Results
{
public:
    /// The file has read the first line of the step.
    /// \param firstPart which of the source's parts the first one of the mesh is
    Results(DataFile& file, Mesh const& mesh, std::size_t firstPart,
            CaseFile::Variable const& variable);

    /// Hands over the values of each part. Those that are not defined are NaN.
    void read(Exchange::Source::FieldVisitor const& visit);

    /// The number of the part that the file ends with, when the mesh has more that could have
    /// values.
    std::optional<std::int64_t> partAtEarlyEnd() const;

private:
    void readSharedNodes();
    void readPart(Words const& words);
    void readValues(Words const& words);
    void readRows(Words const& words, std::size_t first, std::size_t count);
    std::vector<std::uint32_t> readDefinedRows(std::size_t count);
    void finishPart();
    void visit(std::size_t part, std::vector<float> values) const;
    bool mayHaveValues(MeshPart const& part) const;
    std::size_t placeOf(std::size_t component) const;
    [[noreturn]] void raiseLess() const;

    DataFile& file_;
    Mesh const& mesh_;
    std::size_t firstPart_;
    CaseFile::Variable const& variable_;
    Exchange::Source::FieldVisitor const* visit_ = nullptr;
    std::set<std::size_t> parts_;
    std::size_t latestPart_ = 0;

    // What is known of the part that was read last.
    MeshPart const* part_ = nullptr;
    std::int64_t number_ = 0;
    std::set<std::string> types_;
    std::vector<float> values_;
};

} // namespace EnSight

#endif
