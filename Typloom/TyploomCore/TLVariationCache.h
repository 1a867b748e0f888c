#pragma once

/// Variation models by the set of places that they are built on.
class TLVariationCache { };
