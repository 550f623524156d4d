# Doxygen's view of a header: members that say the same in every class are explained here, once, and the heading of a
# group of members explains each of them that has no comment of its own. Lines keep their numbers.

function explain(text) {
    sub(/^    /, "    /** " text " */ ")
}

/^ *\/\/\/ @name / {
    heading = $0
    sub(/^ *\/\/\/ @name /, "", heading)
    begun = 1
}
begun && /^ *\/\/\/ [^@]/ {
    line = $0
    sub(/^ *\/\/\/ /, "", line)
    heading = heading (heading ~ /[.:;,]$/ ? " " : ". ") line
}
/^ *\/\/\/ @{/ { grouped = 1; begun = 0 }
/^ *\/\/\/ @}/ { grouped = 0 }

/^    [A-Za-z]/ && !commented && !open {
    if (/ DESCRIPTOR_TAG = /) {
        explain("descriptor_tag of the class.")
    } else if (/ MINIMUM_DESCRIPTOR_LENGTH = /) {
        explain("Fewest bytes of a body, that is the smallest descriptor_length, that parse() accepts.")
    } else if (/ MINIMUM_DATA_LENGTH = /) {
        explain("Fewest bytes that parse() accepts.")
    } else if (grouped && !/\/\/\/</) {
        explain(heading)
    }
}

{
    commented = /^ *\/\/\// && !/@[{}]/
    # A declaration goes on until its line ends with a semicolon or a closed body.
    if (!/^ *\/\//) {
        open = /^    .*[,(]$/ || (open && !/[;}]$/)
    }
    print
}
