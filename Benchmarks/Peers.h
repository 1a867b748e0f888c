#pragma once

class Table;

/// The same work done by Python's libraries for fonts, in turn with ours.
void measurePeers(Table& table);
