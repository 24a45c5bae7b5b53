#include "GmshFile.h"

#include <gmsh.h>

namespace GmshTest {

Library::Library()
{
    gmsh::initialize(0, nullptr, false);
    gmsh::option::setNumber("General.Terminal", 0);
}

Library::~Library()
{
    gmsh::finalize();
}

} // namespace GmshTest
