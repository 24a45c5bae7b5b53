#ifndef MOX_CHECK_KINDS_H
#define MOX_CHECK_KINDS_H

#include "Finding.h"

#include <array>

/// All kinds of findings. docs/mox.md says of each what it means.
///
/// An error is what no reader can make sense of, or what no mesh has that was computed with. What
/// an engineer may have wanted, though it is seldom meant, is a warning; what is usual in results
/// of solvers and only has to be known, a note.
namespace Mox::Check::Kinds {

inline constexpr Kind noCoordinates = {"no coordinates", Severity::Error};
inline constexpr Kind numberType = {"type of numbers", Severity::Error};
inline constexpr Kind notFinitePosition = {"position not finite", Severity::Error};
inline constexpr Kind noPolylength = {"no polylength", Severity::Error};
inline constexpr Kind noConnectivity = {"no connectivity", Severity::Error};
inline constexpr Kind polylengthSum = {"polylength sum", Severity::Error};
inline constexpr Kind nodeOutOfRange = {"node out of range", Severity::Error};
inline constexpr Kind elementType = {"element type", Severity::Error};
inline constexpr Kind meshInStep = {"mesh in a step", Severity::Error};
inline constexpr Kind idsNotUnique = {"ids not unique", Severity::Error};
inline constexpr Kind rowCount = {"row count", Severity::Error};
inline constexpr Kind negativeVolume = {"negative volume", Severity::Error};
inline constexpr Kind twistedElement = {"twisted element", Severity::Error};
inline constexpr Kind timesDiffer = {"times differ", Severity::Error};
inline constexpr Kind linkOfOtherType = {"link to another type", Severity::Error};
inline constexpr Kind transform = {"transform not finite", Severity::Error};

inline constexpr Kind sizeOfZero = {"size of zero", Severity::Warning};
inline constexpr Kind unusedNodes = {"unused nodes", Severity::Warning};
inline constexpr Kind secondMesh = {"second mesh", Severity::Warning};
inline constexpr Kind layoutChanges = {"layout changes", Severity::Warning};
inline constexpr Kind timeOrder = {"time order", Severity::Warning};
inline constexpr Kind noTime = {"no time", Severity::Warning};
inline constexpr Kind timeNotFinite = {"time not finite", Severity::Warning};
inline constexpr Kind notNumbers = {"not a number", Severity::Warning};
inline constexpr Kind infinite = {"infinite values", Severity::Warning};
inline constexpr Kind lostValues = {"lost values", Severity::Warning};
inline constexpr Kind linkToLink = {"link to a link", Severity::Warning};
inline constexpr Kind scaleOfZero = {"scale of zero", Severity::Warning};
inline constexpr Kind material = {"material", Severity::Warning};
inline constexpr Kind sameName = {"same name", Severity::Warning};
inline constexpr Kind emptyModel = {"empty model", Severity::Warning};

inline constexpr Kind rowsWithoutValue = {"rows without value", Severity::Note};
inline constexpr Kind lengthOfZero = {"length of zero", Severity::Note};
inline constexpr Kind noDatasets = {"no datasets", Severity::Note};

inline constexpr std::array<Kind const*, 34> all = {
    &noCoordinates, &numberType,       &notFinitePosition, &noPolylength, &noConnectivity,
    &polylengthSum, &nodeOutOfRange,   &elementType,       &meshInStep,   &idsNotUnique,
    &rowCount,      &negativeVolume,   &twistedElement,    &timesDiffer,  &linkOfOtherType,
    &transform,     &sizeOfZero,       &unusedNodes,       &secondMesh,   &layoutChanges,
    &timeOrder,     &noTime,           &timeNotFinite,     &notNumbers,   &infinite,
    &lostValues,    &linkToLink,       &scaleOfZero,       &material,     &sameName,
    &emptyModel,    &rowsWithoutValue, &lengthOfZero,      &noDatasets};

} // namespace Mox::Check::Kinds

#endif
