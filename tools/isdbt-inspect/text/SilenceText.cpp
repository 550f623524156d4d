#include "text/SilenceText.h"

#include <fmt/chrono.h>

namespace inspect {

Line silenceText(const Silence& silence) {
    const Line mark = silence.isOver ? Line("=", Ink::Good) : Line("!", Ink::Fault);
    return mark + fmt::format(" {} {:.1f} s  {:%Y-%m-%d %H:%M:%S} UTC",
                              silence.isOver ? "data again after" : "no data for", silence.seconds,
                              fmt::gmtime(silence.at));
}

} // namespace inspect
