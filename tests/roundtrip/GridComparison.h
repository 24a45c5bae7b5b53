#ifndef TESTS_ROUNDTRIP_GRIDCOMPARISON_H
#define TESTS_ROUNDTRIP_GRIDCOMPARISON_H

#include "support/ModelFile.h"

#include <string>
#include <vector>

class vtkDataSet;

/// Expects that shapes of a model hold, taken together, what a grid holds: every point and every
/// cell once, with the ids that count them from 1, and all values of all arrays, rounded to single
/// precision where a model can't do better.
///
/// \param path the groups that the shapes are in, below the root
void expectSameMesh(vtkDataSet& grid, Support::ModelFile& model,
                    std::vector<std::string> const& shapes,
                    Support::ModelFile::Path const& path = {});
void expectSameFields(vtkDataSet& grid, Support::ModelFile& model,
                      std::vector<std::string> const& shapes, std::string const& step = "",
                      Support::ModelFile::Path const& path = {});

#endif
