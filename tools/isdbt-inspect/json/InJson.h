#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"
#include "json/AlarmJson.h"
#include "json/RangeJson.h"

#include <string>

namespace inspect {

/// A form of output of objects in JSON, one a line, each with the source that it is of.
/// @tparam Base Renderer, or a kind of it
template <class Base> class InJson : public Base {
public:
    explicit InJson(Output& output) : m_output(output) {}

    void begin(const std::string& name) override {
        Base::begin(name);
        m_source = name;
    }

    void alarm(const Alarm& alarm) override { write(alarmLine(m_source, alarm)); }
    void setSilent(bool isSilent) override { m_isSilent = isSilent; }
    void endRange(const Summary& summary) override { write(rangeLine(m_source, summary)); }

protected:
    const std::string& source() const { return m_source; }
    void write(const std::string& lines) {
        if (!m_isSilent) {
            m_output.write(lines);
        }
    }

private:
    Output& m_output;
    std::string m_source;
    bool m_isSilent = false;
};

} // namespace inspect
