#include "Options.h"

#include "inputs/HexText.h"
#include "inputs/StreamAddress.h"
#include "tables/TableKinds.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <iterator>
#include <map>

namespace inspect {

namespace {

/// The values that an option has, by what it calls them.
template <class Rows, class Entry> auto named(const Rows& rows, Entry entry) {
    std::map<std::string, decltype(entry(*rows.begin()).second)> byName;
    for (const auto& row : rows) {
        byName.insert(entry(row));
    }
    return byName;
}

const auto TABLES = named(TABLE_KINDS, [](const TableKind& kind) { return std::pair(kind.option, kind.id); });
const auto VIEWS = named(views(), [](const View& view) { return std::pair(view.name, &view); });

/// What stands for each row, with something between them.
template <class Rows, class Text> std::string joined(const Rows& rows, const char* between, Text text) {
    std::string all;
    for (const auto& row : rows) {
        all.append(all.empty() ? "" : between).append(text(row));
    }
    return all;
}

const std::map<std::string, Colour> COLOURS{
    {"auto", Colour::Auto}, {"always", Colour::Always}, {"never", Colour::Never}};

/// A PID as people write it: decimal, or hexadecimal behind 0x. A leading zero has no meaning.
std::optional<Pid> readPid(const std::string& text) {
    const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const char* const begin = text.data() + (hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    Pid pid = 0;
    const auto [behind, error] = std::from_chars(begin, end, pid, hexadecimal ? 16 : 10);
    if (error != std::errc() || behind != end || pid >= NULL_PID) {
        return std::nullopt;
    }
    return pid;
}

std::string checkPid(const std::string& text) {
    return readPid(text) ? "" : text + " is no PID (0 to 8190, or 0x0000 to 0x1FFE)";
}

std::string checkInput(const std::string& text) {
    try {
        if (StreamAddress::isOne(text)) {
            const StreamAddress address(text);
        }
        return {};
    } catch (const std::invalid_argument& error) {
        return text + ": " + error.what();
    }
}

/// @param text bytes in hexadecimal, or "-" when they are to come from standard input
std::vector<std::uint8_t> readHexOf(const std::string& text) {
    return readHex(text == "-" ? std::string(std::istreambuf_iterator<char>(std::cin), {}) : text);
}

std::string checkCharset(const std::string& name) {
    try {
        const Charset charset(name);
        return {};
    } catch (const UnknownCharset& error) {
        return error.what();
    }
}

/// A check for the names of some values.
template <class Value> auto checkName(const std::map<std::string, Value>& values) {
    return [&values](const std::string& name) {
        if (values.count(name) != 0) {
            return std::string();
        }
        return name + " is none of " + joined(values, ", ", [](const auto& each) { return each.first; });
    };
}

/// What a table may be called: "PAT", "dsmcc", "DSM-CC".
std::string withoutCase(std::string name) {
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char each) { return std::tolower(each); });
    return name;
}

/// Adds an option that has one of some values, by name.
template <class Value, class Target>
CLI::Option* addChoice(CLI::App& app, const std::string& option, Target& target,
                       const std::map<std::string, Value>& values, const std::string& description) {
    return app
        .add_option_function<std::string>(
            option, [&](const std::string& name) { target = values.at(name); }, description)
        ->check(checkName(values));
}

void addInputs(CLI::App& app, Options& options) {
    app.add_option("FILE", options.inputs,
                   "transport streams with packets of 188, 192 or 204 bytes; - is standard input; "
                   "udp://[GROUP@]ADDRESS:PORT receives one, in RTP or without")
        ->check(checkInput);
    app.add_flag("--sections", options.sections,
                 "the files hold sections, one behind the other, and no packets, as those named *.sec do");
    app.add_option_function<std::string>(
           "--hex", [&options](const std::string& text) { options.hex = readHexOf(text); },
           "sections or packets in hexadecimal, as logs and dumps hold them, in place of a file; - is standard input")
        ->type_name("BYTES");
    addChoice(app, "--descriptor", options.descriptorOf, TABLES, "the bytes of --hex are a descriptor of this table")
        ->type_name("TABLE")
        ->transform(withoutCase)
        ->needs("--hex");
}

void addInterest(CLI::App& app, Options& options) {
    app.add_option_function<std::vector<std::string>>(
           "--pid",
           [&options](const std::vector<std::string>& pids) {
               for (const std::string& pid : pids) {
                   options.interest.pids.set(*readPid(pid));
               }
           },
           "also look at this PID, decimal or 0x hexadecimal; may be given several times")
        ->type_name("PID")
        ->allow_extra_args(false)
        ->check(checkPid);
    app.add_option_function<std::vector<std::string>>(
           "--table",
           [&options](const std::vector<std::string>& names) {
               for (const std::string& name : names) {
                   options.interest.tables.insert(TABLES.at(name));
               }
           },
           "show these only: " + joined(TABLE_KINDS, ", ", [](const TableKind& kind) { return kind.option; }) +
               "; several behind commas")
        ->type_name("TABLE,...")
        ->transform(withoutCase)
        ->allow_extra_args(false)
        ->delimiter(',')
        ->check(checkName(TABLES));
}

void addOutput(CLI::App& app, Options& options) {
    addChoice(app, "--view", options.view, VIEWS,
              joined(views(), "; ", [](const View& view) { return view.name + ": " + view.help; }))
        ->type_name("VIEW")
        ->default_str(options.view->name);
    app.add_flag("--json", options.json, "an object in JSON for each section and each fault, one a line");
    addChoice(app, "--color", options.colour, COLOURS, "auto: on a terminal, unless NO_COLOR is set; always; never")
        ->type_name("WHEN")
        ->default_str("auto");
    app.add_option("--width", options.width, "columns of a line; those of the terminal if not given")
        ->type_name("COLUMNS")
        ->check(CLI::Range(40, 10000).description(""));
    app.add_option("--charset", options.charset,
                   "coding of the texts: auto, latin-america, japan, or any that iconv --list names")
        ->type_name("NAME")
        ->capture_default_str()
        ->check(checkCharset);
    app.add_flag("--lenient", options.lenient, "exit with 0, not 3, when something is wrong with the stream");
}

/// Options that are well by themselves may make no sense beside each other.
void checkTogether(const CLI::App& app, const Options& options) {
    if (options.inputs.empty() == !options.hex) {
        throw UsageError(options.hex ? "either FILE or --hex" : "FILE is required");
    }
    if ((options.sections || options.hex) && options.interest.pids.any()) {
        throw UsageError("--pid: sections outside of packets have no PID");
    }
    if (options.descriptorOf == PAT) {
        throw UsageError("--descriptor: a PAT carries no descriptors");
    }
    if (options.descriptorOf && app.count("--table") + app.count("--view") != 0) {
        throw UsageError("--descriptor: --table and --view are for sections");
    }
}

} // namespace

std::optional<Options> readOptions(int argc, char** argv) {
    CLI::App app("Shows the tables that an ISDB-T transport stream carries, as a receiver with the Ginga middleware "
                 "understands them.",
                 "isdbt-inspect");
    Options options;
    addInputs(app, options);
    addInterest(app, options);
    addOutput(app, options);
    app.set_version_flag("--version", std::string("isdbt-inspect ") + ISDBT_INSPECT_VERSION);
    app.footer("Exit status: 0 all well, 1 the input could not be read to its end, 2 wrong usage, "
               "3 something was rejected or damaged, or does not fit together.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wish) {
        app.exit(wish);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    } catch (const HexError& error) {
        throw UsageError(std::string("--hex: ") + error.what());
    }
    checkTogether(app, options);
    if (options.descriptorOf || (options.hex && app.count("--view") == 0)) {
        options.view = VIEWS.at("tables"); // a section or a descriptor is no multiplex to draw a tree of
    }
    return options;
}

} // namespace inspect
