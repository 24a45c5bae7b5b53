#include "Openers.h"

Exchange::SourceOpener exodusOpener()
{
    return {};
}
