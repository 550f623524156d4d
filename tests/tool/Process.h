#pragma once

#include "support/Bytes.h"

#include <string>
#include <vector>

/// What is left of a program that ran.
struct Finished {
    int status; ///< exit status; -1 when a signal ended it
    std::string output;
    std::string errors;
};

/// How a program is started, beside its arguments.
struct Start {
    ByteVector input{};          ///< what it finds on standard input
    std::size_t chunk = 0;       ///< writes so many bytes of it at a time; 0 all at once
    bool outputIsClosed = false; ///< nobody reads its standard output
    std::string outputFile = ""; ///< its standard output goes there
};

/// Runs a program to its end.
/// @param program is run as it is; what is built for another machine begins with its emulator, see commandOf().
Finished runProgram(const std::string& program, const std::vector<std::string>& arguments, const Start& start = {});

/// How a program of this build is started: the words of its command. For another machine it is an argument of its
/// emulator.
std::vector<std::string> commandOf(const std::string& program, const std::vector<std::string>& arguments = {});

/// Runs a program of this build to its end.
Finished runBuilt(const std::string& program, const std::vector<std::string>& arguments, const Start& start = {});

/// Runs isdbt-inspect.
Finished inspect(const std::vector<std::string>& arguments, const Start& start = {});

/// Runs isdbt-inspect for each section when it is new.
Finished inspectTables(std::vector<std::string> arguments, const Start& start = {});

/// A file that goes with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const ByteVector& bytes = {});
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

/// Runs inspectTables() on a file with these bytes. What it says of the file calls it FILE.
Finished inspectBytes(const ByteVector& stream, std::vector<std::string> arguments = {});

/// inspectBytes() where only these tables are of interest, so that no others are missed.
/// @param tables "pat,pmt"
Finished inspectOnly(const std::string& tables, const ByteVector& stream);

ByteVector readFile(const std::string& path);
std::string readText(const std::string& path);
