#ifndef MOX_PRINT_DATASETPRINTER_H
#define MOX_PRINT_DATASETPRINTER_H

#include "common/Progress.h"
#include "moxread/Dataset.h"

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace Mox {

/// Writes the values of a dataset in pieces, in one of several formats. Stops early when the stream
/// takes no more.
class DatasetPrinter
{
public:
    DatasetPrinter(MoxRead::Dataset const& dataset, std::ostream& out, Common::Progress& progress);

    /// A line for each row, the values separated by blanks.
    void writeText() const;
    /// A line with the names of the columns, then one for each row.
    void writeCsv(std::vector<std::string> const& columns) const;
    /// An array file of NumPy, format 1.0.
    void writeNpy() const;
    /// The items of an array in JSON: an array for each row, or a number where there is one column.
    void writeJsonRows() const;

private:
    using AppendRow = std::function<void(std::string& to, std::size_t row)>;

    void writeRows(AppendRow const& append) const;
    void appendValues(std::string& to, std::size_t row, char separator) const;
    void appendJsonRow(std::string& to, std::size_t row) const;
    std::string npyHeader() const;

    MoxRead::Dataset const& dataset_;
    std::ostream& out_;
    Common::Progress& progress_;
};

} // namespace Mox

#endif
