// Random legal graphs for properties: every setting is given some value that its setter accepts.
#pragma once

#include "graph/model/graph.h"

#include <random>

namespace lumoplot {

using TRandom = std::mt19937;

void FillRandomly(TxyGraph& graph, TRandom& random, int childDepth = 1);

/// A graph's file as bytes: two graphs are equal in every key when these are.
TBytes FileOf(const TxyGraph& graph, TPoints points = TPoints::Include);

void LoadBytes(TxyGraph& graph, const TBytes& bytes);

} // namespace lumoplot
