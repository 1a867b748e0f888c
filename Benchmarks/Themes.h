#pragma once

#include "Benchmarks/SyntheticFamily.h"
#include "Benchmarks/Table.h"

#include <vector>

/// T, B and, but in the short form, X.
std::vector<FamilySize> measuredSizes();

// The parts of the table.

void measureRefreshes(Table& table);
void measureSlider(Table& table);
void measureSearches(Table& table);
void measureDifferences(Table& table);
void measureInterpolation(Table& table);
void measurePainting(Table& table);
void measureFiles(Table& table);
void measureLists(Table& table);
void measureGrowth(Table& table);
void measureSoak(Table& table);
