#include "Options.h"

#include "OptionValues.h"
#include "exporting/Exporter.h"
#include "inputs/HexText.h"
#include "inputs/StreamAddress.h"
#include "metrics/Metrics.h"
#include "serving/PageServer.h"
#include "tables/TableKinds.h"

#include <CLI/CLI.hpp>
#include <climits>
#include <functional>
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

constexpr const char* PROGRAM_VERSION = "-V";

constexpr unsigned HIGHEST_PID = NULL_PID - 1;
constexpr unsigned HIGHEST_EXTENSION = 0xFFFF;
constexpr unsigned HIGHEST_VERSION = 31;
constexpr int MOST_JOBS = 256;

std::string checkTime(const std::string& text) {
    return readTime(text) ? "" : text + " is no time (90, 90s, 1:30 or 00:01:30)";
}

std::string checkBitRate(const std::string& text) {
    return readBitRate(text) ? "" : text + " is no bit rate (29958294, 29958k or 29.958M)";
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

/// A check of a text of which something can be made.
/// @param make throws the error when it cannot
template <class Error, class Make> auto checkMade(const Make& make) {
    return [make](const std::string& text) -> std::string {
        try {
            make(text);
            return {};
        } catch (const Error& error) {
            return error.what();
        }
    };
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
                   "transport streams with packets of 188, 192 or 204 bytes, compressed (gzip, xz, zstd) or not; "
                   "- is standard input; udp://[GROUP@]ADDRESS:PORT receives one, in RTP or without")
        ->check(checkInput);
    app.add_flag("--sections", options.sections,
                 "the files hold sections, one behind the other, and no packets, as those named *.sec do");
    app.add_option_function<std::string>(
           "--bit-rate", [&options](const std::string& text) { options.bitRate = readBitRate(text); },
           "the rate of a stream without PCR, by which its time is told: bits a second of packets of 188 bytes; 29.958M "
           "and 440k are understood")
        ->type_name("RATE")
        ->check(checkBitRate);
    app.add_option_function<std::string>(
           "--hex", [&options](const std::string& text) { options.hex = readHexOf(text); },
           "sections or packets in hexadecimal, as logs and dumps hold them, in place of a file; - is standard input")
        ->type_name("BYTES");
    addChoice(app, "--descriptor", options.descriptorOf, TABLES, "the bytes of --hex are a descriptor of this table")
        ->type_name("TABLE")
        ->transform(withoutCase)
        ->needs("--hex");
}

/// Adds an option that takes a number and may be given several times.
/// @param error what a text is, when it is no such number
CLI::Option* addNumbers(CLI::App& app, const std::string& option, unsigned most,
                        const std::function<void(unsigned)>& take, const std::string& description,
                        const std::string& error) {
    return app
        .add_option_function<std::vector<std::string>>(
            option,
            [take, most](const std::vector<std::string>& texts) {
                for (const std::string& text : texts) {
                    take(*readNumber(text, most));
                }
            },
            description)
        ->allow_extra_args(false)
        ->check([most, error](const std::string& text) { return readNumber(text, most) ? "" : text + error; });
}

void addTime(CLI::App& app, const std::string& option, std::optional<double>& target, const std::string& description,
             std::string (*check)(const std::string& text) = checkTime) {
    app.add_option_function<std::string>(
           option, [&target](const std::string& text) { target = readTime(text); }, description)
        ->type_name("TIME")
        ->check(check);
}

/// Adds an option that takes the names of tables.
void addTables(CLI::App& app, const std::string& option, std::set<std::uint8_t>& tables,
               const std::string& description) {
    app.add_option_function<std::vector<std::string>>(
           option,
           [&tables](const std::vector<std::string>& names) {
               for (const std::string& name : names) {
                   tables.insert(TABLES.at(name));
               }
           },
           description)
        ->type_name("TABLE,...")
        ->transform(withoutCase)
        ->allow_extra_args(false)
        ->delimiter(',')
        ->check(checkName(TABLES));
}

std::string checkDuration(const std::string& text) {
    const std::string wrong = checkTime(text);
    return wrong.empty() && *readTime(text) <= 0 ? text + " is no time that passes" : wrong;
}

void addDuration(CLI::App& app, const std::string& option, std::optional<double>& target,
                 const std::string& description) {
    addTime(app, option, target, description, checkDuration);
}

void addInterest(CLI::App& app, Options& options) {
    addNumbers(
        app, "--pid", HIGHEST_PID, [&options](unsigned pid) { options.interest.pids.set(pid); },
        "also look at this PID, decimal or 0x hexadecimal; may be given several times",
        " is no PID (0 to 8190, or 0x0000 to 0x1FFE)")
        ->type_name("PID");
    addTables(app, "--table", options.interest.tables,
              "show these only: " + joined(TABLE_KINDS, ", ", [](const TableKind& kind) { return kind.option; }) +
                  "; several behind commas");
    addTables(app, "--without", options.interest.without, "do not show these");
}

/// Which sections of these tables are shown.
void addChoosing(CLI::App& app, Interest& interest) {
    app.add_flag("--rejected", interest.rejected, "show those sections alone that the library rejects");
    app.add_flag("--show-damaged", interest.damaged,
                 "show those in packets, too, whose CRC_32 is wrong; with --rejected these and the rejected ones");
    addNumbers(
        app, "--extension", HIGHEST_EXTENSION,
        [&interest](unsigned extension) { interest.extensions.insert(static_cast<std::uint16_t>(extension)); },
        "show those alone with this table_id_extension, decimal or 0x hexadecimal; may be given several times",
        " is no table_id_extension (0 to 65535, or 0x0000 to 0xFFFF)")
        ->type_name("ID");
    addNumbers(
        app, "--version", HIGHEST_VERSION,
        [&interest](unsigned version) { interest.versions.insert(static_cast<std::uint8_t>(version)); },
        "show those alone with this version_number, 0 to 31; without a number, print the program's version and exit",
        " is no version_number (0 to 31)")
        ->type_name("N");
    addTime(app, "--since", interest.since,
            "show what is carried from then on by the stream's clock, which begins with its first PCR: 90, 90s, 1:30, "
            "00:01:30");
    addTime(app, "--until", interest.until, "show what is carried until then");
}

void addBound(CLI::App& app, const std::string& option, std::optional<Range::Bound>& target,
              const std::string& description) {
    app.add_option_function<std::string>(
           option, [&target](const std::string& text) { target = readBound(text); }, description)
        ->type_name("PLACE")
        ->check([](const std::string& text) {
            return readBound(text) ? "" : text + " is no byte (1000000) and no time (90s, 2m, 1:30 or 00:01:30)";
        });
}

/// How work is shared among cores and machines.
void addParts(CLI::App& app, Options& options) {
    addBound(
        app, "--from", options.range.from,
        "with --json, tell of the packets from this byte on, 1000000, or this time of the stream, 90s, 2m or 1:30; "
        "what is before is learnt from");
    addBound(app, "--to", options.range.to, "tell of the packets before this byte or time");
    app.add_flag("--merge", options.merge,
                 "the files are what --json wrote of the ranges of a file, in order: make that of the whole of it");
    app.add_option("--jobs", options.jobs,
                   "read so many files at once, and one ahead; 0 is as many as this machine has cores")
        ->type_name("N")
        ->check(CLI::Range(0, MOST_JOBS).description(""));
}

/// How it runs for long.
void addOperation(CLI::App& app, Options& options) {
    addDuration(app, "--every", options.times.every,
                "in view stats or carousels, show what came so far again and again");
    addDuration(app, "--seconds", options.times.length,
                "end an input after this time: of a live one here, of another one by the stream's clock");
    addDuration(app, "--no-data", options.times.noData,
                "say when nothing comes on a live input for so long, and when something comes again");
    app.add_option("--metrics", options.metrics,
                   "serve figures over HTTP for Prometheus, on the loopback when there is no ADDRESS")
        ->type_name("[ADDRESS:]PORT")
        ->check(Metrics::objectionTo);
    app.add_option("--serve", options.serve,
                   "serve the page of --report while live inputs are read, on the loopback when there is no ADDRESS")
        ->type_name("[ADDRESS:]PORT")
        ->check(PageServer::objectionTo);
    app.add_option("--log", options.log,
                   "append to this file what else goes to standard output; SIGUSR1 opens it anew, for log rotation")
        ->type_name("FILE");
}

/// What carousels bring, as files.
void addExtraction(CLI::App& app, Options& options) {
    CLI::Option* const extract =
        app.add_option_function<std::string>(
               "--extract",
               [&options](const std::string& folder) {
                   options.extraction = options.extraction.value_or(ExtractionWishes());
                   options.extraction->folder =
                       folder.substr(0, std::max<std::size_t>(folder.find_last_not_of('/') + 1, 1));
               },
               "write the files of carousels below this folder, each version of a carousel in a folder of its own")
            ->type_name("FOLDER")
            ->check(
                [](const std::string& folder) { return std::string(folder.empty() ? "a folder needs a name" : ""); });
    const auto addFlag = [&](const char* name, bool ExtractionWishes::*flag, const char* description) {
        app.add_flag_callback(
               name,
               [&options, flag] {
                   options.extraction = options.extraction.value_or(ExtractionWishes());
                   (*options.extraction).*flag = true;
               },
               description)
            ->needs(extract);
    };
    addFlag("--partial", &ExtractionWishes::partial,
            "with --extract, write what did not come whole, too, as NAME.partial, with zeros for what is missing");
    addFlag("--overwrite", &ExtractionWishes::overwrite, "with --extract, replace files that are there already");
}

void addOutput(CLI::App& app, Options& options) {
    addChoice(app, "--view", options.view, VIEWS,
              joined(views(), "; ", [](const View& view) { return view.name + ": " + view.help; }) +
                  "; if not given, " + options.view->name +
                  ", or tables with --hex, --bytes and where sections are chosen")
        ->type_name("VIEW");
    app.add_flag("--full", options.full, "the tree with all that the tables say, descriptors included");
    app.add_flag("--json", options.json, "an object in JSON for each section and each fault, one a line");
    addChoice(app, "--color", options.colour, COLOURS, "auto: on a terminal, unless NO_COLOR is set; always; never")
        ->type_name("WHEN")
        ->default_str("auto");
    app.add_flag("--bytes", options.interest.bytes,
                 "in view tables and in JSON, show the bytes of all sections, not of rejected ones alone");
    app.add_option(
           "--export", options.exportTo,
           "write the sections that are shown, byte for byte: FILE.sec: one behind the other; FILE.hex: as text "
           "that --hex - reads; FOLDER/: a file for each")
        ->type_name("PLACE")
        ->check(objectionTo);
    app.add_option("--report", options.report,
                   "also write a page for a browser, with all that is found and when it came; needs nothing but itself")
        ->type_name("FILE.html");
    addExtraction(app, options);
    app.add_option("--width", options.width, "columns of a line; those of the terminal if not given")
        ->type_name("COLUMNS")
        ->check(CLI::Range(40, 10000).description(""));
    app.add_option("--charset", options.charset,
                   "coding of the texts: auto, latin-america, japan, or any that iconv --list names")
        ->type_name("NAME")
        ->capture_default_str()
        ->check(checkMade<UnknownCharset>([](const std::string& name) { return Charset(name); }));
    app.add_option_function<std::string>(
           "--time-zone", [&options](const std::string& name) { options.zone = TimeZone(name); },
           "zone of the times, which the stream does not say; UTC-3, that of Brasilia, is assumed")
        ->type_name("ZONE")
        ->check(checkMade<UnknownTimeZone>([](const std::string& name) { return TimeZone(name); }));
    app.add_option_function<std::string>(
           "--limits", [&options](const std::string& name) { options.interest.limits = Profile::named(name); },
           "alarms where the stream breaks the limits of a profile: " +
               joined(Profile::bundled(), ", ", [](const std::string& name) { return name; }) +
               ", or a file that is like them")
        ->type_name("PROFILE")
        ->check(checkMade<ProfileError>(Profile::named));
    app.add_option_function<std::vector<std::string>>(
           "--receiver-profile",
           [&options](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   options.interest.receiver.insert(*readProfile(text));
               }
           },
           "a profile of applications that the receiver has, and its version; an application that is for others does "
           "not start; may be given several times")
        ->allow_extra_args(false)
        ->type_name("PROFILE:VERSION")
        ->check([](const std::string& text) {
            return readProfile(text) ? "" : text + " is no profile with its version (1:1.0.0, 0x0001:1.2.0)";
        });
    app.add_flag("--lenient", options.lenient, "exit with 0, not 3, when something is wrong with the stream");
}

/// What sections that did not come in packets have not.
void checkOfSections(const CLI::App& app, const Options& options) {
    const std::pair<bool, const char*> NONE[] = {
        {options.interest.pids.any(), "--pid: sections outside of packets have no PID"},
        {app.count("--limits") != 0, "--limits: sections outside of packets have no time"},
        {options.extraction.has_value(), "--extract: sections outside of packets have no PID"},
        {options.bitRate.has_value(), "--bit-rate: sections outside of packets have no time"},
        {options.interest.isTimed(), "--since, --until: sections outside of packets have no time"},
        {options.times.areOfStream(), "--every, --seconds: sections outside of packets have no time"}};
    for (const auto& [asked, error] : NONE) {
        if (asked) {
            throw UsageError(error);
        }
    }
}

/// Descriptors are no sections.
void checkOfDescriptors(const CLI::App& app, const Options& options) {
    if (options.descriptorOf == PAT) {
        throw UsageError("--descriptor: a PAT carries no descriptors");
    }
    if (app.count("--table") + app.count("--without") + app.count("--view") != 0) {
        throw UsageError("--descriptor: --table, --without and --view are for sections");
    }
    if (options.interest.isChoosy() || options.interest.bytes || options.exportTo || options.report) {
        throw UsageError("--descriptor: there are no sections to choose, to export, to report or to show the bytes of");
    }
}

/// A pipe may be live.
bool isLive(const std::string& input) {
    return input == "-" || StreamAddress::isOne(input);
}

/// What is refused by the first of these that is asked for.
using Refusals = std::vector<std::pair<bool, const char*>>;

void refuse(const std::string& option, const Refusals& refusals) {
    for (const auto& [asked, reason] : refusals) {
        if (asked) {
            throw UsageError(option + ": " + reason);
        }
    }
}

/// What could not be put together again, or would be done twice.
void checkRange(const Options& options) {
    const Range& range = options.range;
    if (!range.isPart()) {
        return;
    }
    const bool isSideEffect = options.exportTo || options.report || options.serve || options.extraction;
    refuse("--from, --to",
           {{!options.json, "they are for --json"},
            {options.inputs.size() != 1, "one file at a time"},
            {options.sections, "sections outside of packets have no place in a stream"},
            {!options.inputs.empty() && StreamAddress::isOne(options.inputs.front()), "a live input is not read twice"},
            {isSideEffect, "--export, --extract, --report and --serve are of a whole file"},
            {options.metrics || options.times.areOfStream(), "--metrics, --every and --seconds are of a whole file"},
            {range.from && range.to && range.from->index() == range.to->index() && *range.to < *range.from,
             "the range ends before it begins"}});
}

void checkJobs(const Options& options) {
    const std::vector<std::string>& inputs = options.inputs;
    if (options.jobs == 1) {
        return;
    }
    const bool isShared = options.exportTo || options.report || options.serve || options.metrics;
    refuse("--jobs",
           {{std::any_of(inputs.begin(), inputs.end(), isLive), "it is for files; live inputs are received at once"},
            {inputs.size() > 1 && isShared, "--export, --report and --metrics take one file after the other"},
            {inputs.size() > 1 && options.view->name == "diff", "view diff compares each file with those before it"}});
}

/// Lines are put together whatever they say.
void checkMerge(const CLI::App& app) {
    const std::set<std::string> allowed{"FILE", "--merge", "--json", "--lenient", "--log"};
    for (const CLI::Option* const option : app.get_options()) {
        if (option->count() != 0 && allowed.count(option->get_name()) == 0) {
            throw UsageError("--merge: " + option->get_name() + " is for streams");
        }
    }
}

/// Options that are well by themselves may make no sense beside each other.
void checkTogether(const CLI::App& app, const Options& options) {
    if (options.inputs.empty() == !options.hex) {
        throw UsageError(options.hex ? "either FILE or --hex" : "FILE is required");
    }
    if (options.merge) {
        checkMerge(app);
        return;
    }
    checkRange(options);
    checkJobs(options);
    if (options.sections || options.hex) {
        checkOfSections(app, options);
    }
    if (options.descriptorOf) {
        checkOfDescriptors(app, options);
    }
    if (options.times.every && options.view->name != "stats" && options.view->name != "carousels") {
        throw UsageError("--every: it is for --view stats and --view carousels");
    }
    if (options.view->text == nullptr && !options.json) {
        throw UsageError("--view " + options.view->name + ": it is for --json");
    }
    if (options.extraction && options.inputs.size() > 1) {
        throw UsageError("--extract: one input at a time, as each has its own carousels");
    }
    if (options.times.noData && std::none_of(options.inputs.begin(), options.inputs.end(), StreamAddress::isOne)) {
        throw UsageError("--no-data: it is for live inputs");
    }
    if (options.serve && std::none_of(options.inputs.begin(), options.inputs.end(), isLive)) {
        throw UsageError("--serve: it is for live inputs");
    }
    const Interest& interest = options.interest;
    if (interest.since && interest.until && *interest.until < *interest.since) {
        throw UsageError("--until is before --since");
    }
    if (interest.damaged && options.view->name == "diff") {
        throw UsageError("--show-damaged: what is damaged is no change");
    }
    if (options.full && (options.json || options.view != &views().front())) {
        throw UsageError("--full: it is for the tree in text; the others show all");
    }
}

/// --version without a number asks for that of the program.
void tellVersionsApart(std::vector<std::string>& words) {
    for (auto word = words.begin(); word != words.end() && *word != "--"; ++word) {
        const auto next = word + 1;
        if (*word == "--version" && (next == words.end() || !readNumber(*next, UINT_MAX))) {
            *word = PROGRAM_VERSION;
        }
    }
}

} // namespace

std::optional<Options> readOptions(std::vector<std::string> words) {
    CLI::App app("Shows the tables that an ISDB-T transport stream carries, as a receiver with the Ginga middleware "
                 "understands them.",
                 "isdbt-inspect");
    Options options;
    addInputs(app, options);
    addInterest(app, options);
    addChoosing(app, options.interest);
    addOutput(app, options);
    addParts(app, options);
    addOperation(app, options);
    app.set_version_flag(PROGRAM_VERSION, std::string("isdbt-inspect ") + ISDBT_INSPECT_VERSION,
                         "print the program's version and exit");
    app.footer("Exit status: 0 all well, 1 the input could not be read to its end, 2 wrong usage, "
               "3 something was rejected or damaged, or does not fit together.");
    try {
        tellVersionsApart(words);
        std::reverse(words.begin(), words.end()); // they are taken from the end
        app.parse(std::move(words));
    } catch (const CLI::Success& wish) {
        app.exit(wish);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    } catch (const HexError& error) {
        throw UsageError(std::string("--hex: ") + error.what());
    }
    checkTogether(app, options);
    const bool ofSections = options.hex || options.interest.isChoosy() || options.interest.bytes;
    if (options.descriptorOf || (ofSections && app.count("--view") == 0)) {
        options.view = VIEWS.at("tables"); // some sections, or a descriptor, are no multiplex to draw a tree of
    }
    options.interest.carousels =
        options.view->ofCarousels || options.interest.damaged || options.extraction || options.report || options.serve;
    return options;
}

} // namespace inspect
