#include "Openers.h"

#include <exodus/Exodus.h>

Exchange::SourceOpener exodusOpener()
{
    return Exodus::open;
}
