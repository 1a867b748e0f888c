#pragma once

/// Marks a class or function that other shared objects of the program may use.
/// Everything else is compiled with hidden visibility.
#define PLATFORM_API __attribute__((visibility("default")))
