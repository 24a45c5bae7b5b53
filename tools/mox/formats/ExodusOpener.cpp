#include "Openers.h"

#include <read/exodus/Source.h>

Exchange::SourceOpener exodusOpener()
{
    return Exodus::open;
}
