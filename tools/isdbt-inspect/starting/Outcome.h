#pragma once

#include "reports/Application.h"

namespace inspect {

/// How a step went.
struct Outcome {
    Step::Result result;
    std::string text;
    std::optional<FaultKind> fault = {}; ///< when it failed, unless that is told already
    double completed = 0;                ///< when all was there that it looked at, in seconds

    bool passed() const { return result == Step::Result::Passed; }
};

inline Outcome passed(std::string text, double completed = 0) {
    return {Step::Result::Passed, std::move(text), std::nullopt, completed};
}

inline Outcome failed(std::optional<FaultKind> fault, std::string text) {
    return {Step::Result::Failed, std::move(text), fault};
}

inline Outcome notSeen(std::string text) {
    return {Step::Result::NotSeen, std::move(text)};
}

/// What is missing as far as it came: a fault when that is sure.
inline Outcome missing(bool isSure, FaultKind fault, std::string text) {
    return isSure ? failed(fault, std::move(text)) : notSeen(std::move(text));
}

} // namespace inspect
