// Writes Classes.h and Classes.cpp: for every class of the public headers the calls of all its getters, copies,
// removals and additions, and the list of those with a parse. What a header declares is thereby fuzzed, without a line
// here.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return std::regex_replace(text, std::regex("//[^\n]*"), "");
}

struct Method {
    std::string name;
    std::string parameters;
};

struct Class {
    std::string name;
    std::string base;
    std::string publicPart;

    std::vector<Method> methods(const std::string& names, const std::string& end) const {
        const std::regex pattern("\\b(" + names + R"()\(([^()]*)\))" + end);
        std::vector<Method> found;
        for (std::sregex_iterator match(publicPart.begin(), publicPart.end(), pattern), last; match != last; ++match) {
            found.push_back({(*match)[1], (*match)[2]});
        }
        return found;
    }

    bool parses() const { return !methods("parse", "").empty(); }
};

using Classes = std::map<std::string, Class>;

Classes classesIn(const std::string& text) {
    const std::regex pattern(R"(\nclass QUOR_ISDBT_API (\w+)(?: : public (\w+))? \{)");
    Classes classes;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), last; match != last; ++match) {
        const std::string rest = match->suffix();
        const std::size_t end = std::min({rest.find("private:"), rest.find("protected:"), rest.find("\n};")});
        classes[(*match)[1]] = {(*match)[1], (*match)[2], rest.substr(0, end)};
    }
    return classes;
}

/// "QUOR_U8 streamType, QUOR_U8 componentID" is "QUOR_U8, QUOR_U8".
std::string typesOf(const std::string& parameters) {
    return std::regex_replace(parameters, std::regex(R"(\s*\b\w+\s*(,|$))"), "$1");
}

std::string itemOf(const std::string& pointer) {
    return pointer.substr(0, pointer.find('*'));
}

/// Arrays stand behind the getter of their size. These do not, or are the caller's.
const std::map<std::string, std::string> ARRAYS{
    {"getData", "reader.array(object.getData(), object.getDataLength())"},
    {"getAreaCodes", "reader.array(object.getAreaCodes(), object.getAreaCodeCounter() / 2U)"},
    {"getTransportProtocols", "delete[] reader.array(object.getTransportProtocols(), "
                              "object.getTransportProtocolsCount())"},
};

std::string readWithout(const Method& getter) {
    const auto array = ARRAYS.find(getter.name);
    return "    " + (array != ARRAYS.end() ? array->second : "reader.take(object." + getter.name + "())") + ";\n";
}

std::string readWith(const Method& getter) {
    if (getter.parameters.find("int* inherited") != std::string::npos) {
        return "    reader.inherited([&](int inherit, int* from) { reader.take(object." + getter.name +
               "(inherit, from)); });\n";
    }
    return "    reader.each<" + typesOf(getter.parameters) + ">([&](auto... at) { reader.take(object." + getter.name +
           "(at...)); });\n";
}

/// Getters of keys before those that need a key.
std::string reads(const Class& each) {
    std::string without;
    std::string with;
    for (const Method& getter : each.methods("(?:(?:get|is|has)[A-Z0-9]\\w*)|get|size", "\\s*const\\b")) {
        (getter.parameters.empty() ? without : with) +=
            getter.parameters.empty() ? readWithout(getter) : readWith(getter);
    }
    return without + with;
}

/// Copies of what is a base of other classes are copies of those.
std::string copies(const Class& each, bool isBase) {
    std::string code;
    for (const Method& copy : each.methods(each.name, "")) {
        if (copy.parameters == each.name + "* source" && !isBase) {
            code += "    copied(new " + each.name + "(&object));\n";
        } else if (copy.parameters == each.name + "* source, int inherit") {
            code += "    copied(new " + each.name + "(&object, 0));\n    copied(new " + each.name + "(&object, 1));\n";
        }
    }
    for (const Method& clone : each.methods("clone", "")) {
        code += "    copied(" + each.name + "::" + clone.name + "(&object));\n";
    }
    return code;
}

std::string changes(const Class& each) {
    std::string code;
    for (const Method& remove : each.methods("remove\\w*", "")) {
        code += "    changer.removeAll<" + typesOf(remove.parameters) + ">([&](const auto& at) { return object." +
                remove.name + "(at); });\n";
    }
    for (const Method& add : each.methods("add\\w*", "")) {
        code += "    changer.add<" + itemOf(typesOf(add.parameters)) + ">([&](auto item) { object." + add.name +
                "(item); });\n";
    }
    return code;
}

/// What is done with an object of a class: the signature, and what stands in it.
struct Function {
    std::string signature;
    std::string body;
};

std::vector<Function> functionsOf(const Class& each, bool isBase) {
    const auto asBase = [&each](const std::string& call, const std::string& type) {
        return each.base.empty() ? "" : "    " + call + ", static_cast<" + type + each.base + "&>(object));\n";
    };
    return {{"void read([[maybe_unused]] Reader& reader, [[maybe_unused]] const " + each.name + "& object)",
             asBase("read(reader", "const ") + reads(each)},
            {"void copy([[maybe_unused]] Copied& copied, [[maybe_unused]] " + each.name + "& object)",
             copies(each, isBase)},
            {"void change([[maybe_unused]] Changer& changer, [[maybe_unused]] " + each.name + "& object)",
             asBase("change(changer", "") + changes(each)}};
}

bool isBase(const Classes& classes, const std::string& name) {
    return std::any_of(classes.begin(), classes.end(), [&](const auto& other) { return other.second.base == name; });
}

void writeHeader(std::ostream& out, const std::set<std::string>& headers, const Classes& classes) {
    for (const std::string& header : headers) {
        out << "#include \"" << header << "\"\n";
    }
    out << "\n#include \"Changer.h\"\n#include \"Reader.h\"\n\nnamespace Quor {\n\n";
    for (const auto& [name, each] : classes) {
        for (const Function& function : functionsOf(each, isBase(classes, name))) {
            out << function.signature << ";\n";
        }
    }
    out << "\n} // namespace Quor\n";
}

void writeSource(std::ostream& out, const Classes& classes) {
    out << "#include \"Target.h\"\n\nnamespace Quor {\n";
    for (const auto& [name, each] : classes) {
        for (const Function& function : functionsOf(each, isBase(classes, name))) {
            out << '\n' << function.signature << " {\n" << function.body << "}\n";
        }
    }
    out << "\n} // namespace Quor\n\n"
           "const std::vector<Target>& allTargets() {\n    static const std::vector<Target> targets{\n";
    for (const auto& [name, each] : classes) {
        if (each.parses()) {
            out << "        target<Quor::" << name << ">(\"" << name << "\"),\n";
        }
    }
    out << "    };\n    return targets;\n}\n";
}

std::set<std::string> headersIn(const std::filesystem::path& folder) {
    std::set<std::string> headers;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".h") {
            headers.insert(entry.path().lexically_relative(folder).generic_string());
        }
    }
    return headers;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Usage: list-classes HEADERS OUTPUT\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const std::filesystem::path output = argv[2];
    const std::set<std::string> headers = headersIn(folder);
    std::string text;
    for (const std::string& header : headers) {
        text += contentsOf(folder / header);
    }
    const Classes classes = classesIn(text);
    std::ofstream header(output / "Classes.h");
    std::ofstream source(output / "Classes.cpp");
    writeHeader(header, headers, classes);
    writeSource(source, classes);
    return header.flush() && source.flush() ? 0 : 1;
}
