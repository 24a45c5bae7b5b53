#include "Openers.h"

#include <read/gmsh/Gmsh.h>

Exchange::SourceOpener gmshOpener()
{
    return Gmsh::open;
}
