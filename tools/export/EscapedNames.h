#ifndef EXPORT_ESCAPEDNAMES_H
#define EXPORT_ESCAPEDNAMES_H

#include <map>
#include <string>

class vtkAbstractArray;
class vtkFieldData;
class vtkUnstructuredGrid;

namespace Export {

/// While it lives, the names of a grid's arrays are as they must stand in an XML attribute: VTK
/// writes them as they are, but reads them as XML.
class EscapedNames
{
public:
    explicit EscapedNames(vtkUnstructuredGrid& grid);
    EscapedNames(EscapedNames const&) = delete;
    EscapedNames& operator=(EscapedNames const&) = delete;
    ~EscapedNames();

private:
    void escape(vtkFieldData& data);

    std::map<vtkAbstractArray*, std::string> names_;
};

} // namespace Export

#endif
