#include "text/SilenceText.h"

#include "text/SectionText.h"

#include <fmt/format.h>

namespace inspect {

Line silenceText(const Silence& silence) {
    const Line mark = silence.isOver ? Line("=", Ink::Good) : Line("!", Ink::Fault);
    return mark + fmt::format(" {} {:.1f} s  {}", silence.isOver ? "data again after" : "no data for", silence.seconds,
                              utcText(silence.at));
}

} // namespace inspect
