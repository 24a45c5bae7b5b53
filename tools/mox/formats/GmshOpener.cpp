#include "Openers.h"

#include <read/gmsh/Source.h>

Exchange::SourceOpener gmshOpener()
{
    return Gmsh::open;
}
