#pragma once

#include "Process.h"

#include <chrono>
#include <csignal>
#include <sys/types.h>

/// isdbt-inspect while it runs. What takes longer than it ever should ends the test's patience, and the program.
class Running {
public:
    /// What its standard output and standard error are.
    enum class On {
        Pipes,
        Terminal, ///< both the same one, of 80 columns
    };

    explicit Running(const std::vector<std::string>& arguments, On on = On::Pipes);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    /// Writes to its standard input.
    void write(const ByteVector& bytes) const;
    void endInput();

    /// Reads its output until a text has come. @return whether it has.
    bool waitFor(const std::string& text);

    /// Waits until it cannot go on, because nobody reads its output. @return whether it has come to that.
    bool waitUntilBlocked() const;

    /// Waits until a signal would no longer end it at once. @return whether it has come to that.
    bool waitUntilCatching(int number) const;

    void signal(int number) const;

    /// Nobody reads its output any more.
    void closeOutput();

    /// What it wrote so far, as far as it was waited for.
    const std::string& output() const { return m_output; }

    /// Waits for its end. @return what it wrote in all; on a terminal all of it is output.
    Finished finish();

    /// After finish(): the most memory it ever had, in bytes.
    std::size_t memory() const { return m_memory; }

private:
    bool readOutput(std::chrono::milliseconds patience);

    pid_t m_child = 0;
    int m_input = -1;
    int m_outputEnd = -1;
    TemporaryFile m_errors;
    std::string m_output;
    std::size_t m_memory = 0;
};
