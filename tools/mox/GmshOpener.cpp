#include "Openers.h"

#include <gmsh/Gmsh.h>

Exchange::SourceOpener gmshOpener()
{
    return Gmsh::open;
}
