#pragma once

/// Marks what the host's shared objects offer to the others and to plug-ins.
#define TYPLOOM_API __attribute__((visibility("default")))
