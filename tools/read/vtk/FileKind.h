#ifndef READ_VTK_FILEKIND_H
#define READ_VTK_FILEKIND_H

namespace VtkRead {

/// The kinds of files that VTK's readers are chosen by.
enum class FileKind
{
    /// .vtu, .vtp, .vtm and the other XML files of VTK.
    Xml,
    /// .pvd: names the XML files of a series.
    Collection,
    /// .vtk
    Legacy,
    Cgns,
    OpenFoam
};

} // namespace VtkRead

#endif
