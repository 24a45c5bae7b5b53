#ifndef READ_VTK_CGNSSECTION_H
#define READ_VTK_CGNSSECTION_H

#include <cstdint>
#include <string>
#include <vector>

namespace VtkRead {

/// Raises `Exchange::Error` with what CGNS' own library says, unless a call of it went well.
void checkCgns(int status);

/// Elements of a zone in a CGNS file that is open.
class CgnsSection
{
public:
    /// All as CGNS counts: from 1.
    CgnsSection(int file, int base, int zone, int section);

    std::string const& name() const { return name_; }

    /// Number of the first element, and of the last.
    std::int64_t first() const { return first_; }
    std::int64_t last() const { return last_; }

    bool isPolygons() const;
    bool isPolyhedra() const;

    /// The highest of its elements'.
    int dimension() const;

    /// Numbers of the faces that polyhedra consist of.
    std::vector<std::int64_t> faces() const;

private:
    struct Connectivity
    {
        std::vector<std::int64_t> values;
        /// Where each element begins, and the end of the last.
        std::vector<std::int64_t> offsets;
    };

    Connectivity connectivity() const;
    int dimensionOfMixed() const;

    int file_;
    int base_;
    int zone_;
    int number_;
    std::string name_;
    std::string type_;
    std::int64_t first_ = 0;
    std::int64_t last_ = 0;
};

} // namespace VtkRead

#endif
