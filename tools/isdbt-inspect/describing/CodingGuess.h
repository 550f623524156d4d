#pragma once

#include "describing/Charset.h"
#include "describing/Field.h"

namespace inspect {

/// What a stream's texts are coded in, as far as its tables tell: nothing in a text says so itself.
class CodingGuess {
public:
    /// Learns from the fields of a table, or from one descriptor: by networks, else by languages and countries.
    void learn(const Fields& fields);

    /// That of Latin America as long as nothing is known.
    Coding coding() const { return m_coding; }

private:
    enum class Certainty { None, Language, Network };

    void learnNetwork(const Fields& fields, bool isTerrestrial);
    void learnLanguages(const Fields& fields);
    void decide(Coding coding, Certainty certainty);

    Coding m_coding = Coding::LatinAmerica;
    Certainty m_certainty = Certainty::None;
};

} // namespace inspect
