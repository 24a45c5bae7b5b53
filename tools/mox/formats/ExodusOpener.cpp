#include "Openers.h"

#include <read/exodus/Exodus.h>

Exchange::SourceOpener exodusOpener()
{
    return Exodus::open;
}
