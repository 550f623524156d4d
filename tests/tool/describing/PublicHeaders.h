#pragma once

#include <set>
#include <string>
#include <vector>

/// A class of the library as its header declares it.
struct PublicClass {
    std::string name;
    std::string base;              ///< empty without one
    std::set<std::string> getters; ///< the const members called get..., is..., has... or size
    std::set<std::string> lists;   ///< those of them whose result is a list
};

/// Every exported class of the public headers.
std::vector<PublicClass> publicClasses();

/// The name of a field that a getter gives: "getPCRPID" is "pcr_pid".
std::string fieldName(const std::string& getter);

/// "TAACDescriptor" is "aac_descriptor".
std::string descriptorName(const std::string& className);
