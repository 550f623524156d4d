#pragma once

/// A constant of a public class, found in its header.
struct Constant {
    const char* name;
    const void* address;
};
