#include "Warnings.h"

namespace Export {

void Warnings::add(std::string const& sentence)
{
    if (known_.insert(sentence).second)
        sentences_.push_back(sentence);
}

} // namespace Export
