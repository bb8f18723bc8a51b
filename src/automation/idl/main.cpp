// Prints the type library of the automation server as IDL.
//
//     quill1xml-idl > Quill1XML.idl

#include "automation/classes.hpp"
#include "automation/identity.hpp"
#include "automation/manual/families.hpp"
#include "automation/manual/meanings.hpp"
#include "automation/manual/notation.hpp"
#include "quill1xml/text.hpp"
#include "text/letter_case.hpp"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using namespace quill1xml;
using namespace quill1xml::automation;

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result.push_back('\\');
        result.push_back(c);
    }
    return result.append("\"");
}

std::string_view idlType(ParameterType type) {
    switch (type) {
        case ParameterType::text: return "BSTR";
        case ParameterType::integer: return "short";
        case ParameterType::longInteger: return "long";
        case ParameterType::floating: return "double";
        case ParameterType::boolean: return "VARIANT_BOOL";
        case ParameterType::date: return "DATE";
        case ParameterType::currency: return "CURRENCY";
        case ParameterType::variantText:
        case ParameterType::variantInteger: return "VARIANT";
        case ParameterType::node:
        case ParameterType::nodeList: return "IDispatch*";
    }
    throw std::logic_error("a parameter of an unknown type");
}

std::string_view idlType(ResultType type) {
    switch (type) {
        case ResultType::nothing: return "void";
        case ResultType::longInteger: return "long";
        case ResultType::integer: return "short";
        case ResultType::floating: return "double";
        case ResultType::date: return "DATE";
        case ResultType::text: return "BSTR";
        case ResultType::bytes:
        case ResultType::received:
        case ResultType::variant: return "VARIANT";
        case ResultType::collection: return "_Collection*";
        case ResultType::enumerator: return "IUnknown*";
    }
    throw std::logic_error("a result of an unknown type");
}

std::string withDefault(std::string_view type, std::string_view value) {
    return std::string("[in, defaultvalue(").append(value).append(")] ").append(type);
}

/// Attributes and type of an optional parameter. Hosts that compile against the library fill in what it says, and zero
/// where it says nothing. The compiler cannot write defaults of broken numbers: a parameter whose default is one other
/// than zero is a variant, which hosts leave empty and the server fills.
std::string optional(const Member& member, const Parameter& parameter) {
    const std::string_view type = idlType(parameter.type);
    bool zero = true;
    switch (parameter.type) {
        case ParameterType::text: return withDefault(type, quoted(toUtf8(defaultOf<Text>(member, parameter))));
        case ParameterType::integer:
            return withDefault(isThreeState(member, parameter) ? "ThreeState" : type,
                               std::to_string(defaultOf<Integer>(member, parameter)));
        case ParameterType::longInteger: return withDefault(type, std::to_string(defaultOf<Long>(member, parameter)));
        case ParameterType::boolean: return withDefault(type, defaultOf<Boolean>(member, parameter) ? "-1" : "0");
        case ParameterType::floating: zero = defaultOf<Double>(member, parameter) == 0; break;
        case ParameterType::date: zero = defaultOf<Date>(member, parameter).days == 0; break;
        case ParameterType::currency: zero = defaultOf<Currency>(member, parameter).tenThousandths == 0; break;
        case ParameterType::variantText:
        case ParameterType::variantInteger:
        case ParameterType::node:
        case ParameterType::nodeList: break;
    }
    return std::string("[in, optional] ").append(zero ? type : "VARIANT");
}

/// The defaults that the library cannot hold, of broken numbers: "Left out: dblBalance not sent; dblRate, dblPrice#
/// -1."
std::string untoldDefaults(const Member& member) {
    std::map<std::string, std::string> names;
    std::set<std::string> told;
    for (const Parameter& parameter : member.parameters) {
        if (parameter.required || parameter.type != ParameterType::floating) continue;
        const double value = defaultOf<Double>(member, parameter);
        const std::string family = patternOf(parameter.name);
        if (value == 0 || !told.insert(family).second) continue;
        std::string& list =
            names[value == mostNegative ? "not sent" : literal(Notation::script, parameter, member.defaults)];
        list.append(list.empty() ? "" : ", ").append(family);
    }
    std::string text;
    for (const auto& [value, list] : names) {
        text.append(text.empty() ? "Left out: " : "; ").append(list).append(" ").append(value);
    }
    return text.empty() ? text : text + ".";
}

/// What browsers of the library show beside a member.
std::string helpOf(const Class& of, const Member& member) {
    std::string help = aboutMember(of, member);
    if (member.dispid >= firstExtension) help.insert(0, "Extension: ");
    for (const std::string& more : {wordLists(member), untoldDefaults(member)}) {
        if (!more.empty()) help.append(" ").append(more);
    }
    return help;
}

/// Members that nobody is to look for: what "For Each" asks for, and what does nothing.
std::string_view visibilityOf(const Member& member) {
    if (member.dispid == collection_ids::newEnum) return "restricted, hidden, ";
    return member.name == "Save" ? "hidden, " : "";
}

void printMember(const Class& of, const Member& member) {
    std::cout << "        [id(" << member.dispid << "), " << (member.kind == MemberKind::propertyGet ? "propget, " : "")
              << visibilityOf(member) << "helpstring(" << quoted(helpOf(of, member)) << ")]\n        "
              << idlType(member.result) << ' ' << member.name << '(';
    std::string_view separator = "\n            ";
    for (const Parameter& parameter : member.parameters) {
        const std::string type =
            parameter.required ? std::string("[in] ").append(idlType(parameter.type)) : optional(member, parameter);
        std::cout << separator << type << ' ' << parameter.name;
        separator = ",\n            ";
    }
    std::cout << ");\n";
}

void printEvent(const Event& event) {
    std::cout << "        [id(" << event.dispid << "), helpstring(" << quoted(event.summary) << ")]\n        void "
              << event.name << '(';
    std::string_view separator;
    for (const Parameter& parameter : event.parameters) {
        std::cout << separator << "[in] " << idlType(parameter.type) << ' ' << parameter.name;
        separator = ", ";
    }
    std::cout << ");\n";
}

/// Opens a dispinterface up to its methods. Whoever looks for something finds it at the class.
void openInterface(std::string_view id, std::string_view name, std::string_view suffix, std::string_view help) {
    std::cout << "\n    [uuid(" << id << "), hidden, helpstring(" << quoted(help) << ")]\n    dispinterface _" << name
              << suffix << "\n    {\n    properties:\n    methods:\n";
}

void printMembers(const Class& of, std::string_view id) {
    openInterface(id, of.name, "", std::string("Members of ").append(of.name));
    for (const Member& member : of.members) printMember(of, member);
    std::cout << "    };\n";
}

void printClass(const Class& of) {
    const Identity* const identity = findIdentity(of.name);
    if (identity == nullptr || of.events.empty() != identity->events.empty()) {
        throw std::logic_error("incomplete identity of the class " + std::string(of.name));
    }
    printMembers(of, identity->members);
    if (!of.events.empty()) {
        openInterface(identity->events, of.name, "Events", std::string("Events of ").append(of.name));
        for (const Event& event : of.events) printEvent(event);
        std::cout << "    };\n";
    }
    std::cout << "\n    [uuid(" << identity->coclass << "), helpstring(" << quoted(of.summary) << ")]\n    coclass "
              << of.name << "\n    {\n        [default] dispinterface _" << of.name << ";\n";
    if (!of.events.empty()) std::cout << "        [default, source] dispinterface _" << of.name << "Events;\n";
    std::cout << "    };\n";
}

void printLibrary() {
    std::cout << "#include \"automation_types.idl\"\n\n[uuid(" << libraryId << "), version(" << libraryMajor << '.'
              << libraryMinor << "), helpstring(\"Quill1XML\")]\nlibrary " << libraryName
              << "\n{\n    importlib(\"stdole2.tlb\");\n\n"
                 "    typedef [helpstring(\"Yes, no, or not sent\")] enum ThreeState\n"
                 "    {\n        tsNotSent = -1,\n        tsNo = 0,\n        tsYes = 1\n    } ThreeState;\n";
    printMembers(collectionClass(), collectionId);
    for (const Class* each : classes()) printClass(*each);
    std::cout << "};\n";
    if (!std::cout.flush()) throw std::runtime_error("cannot write");
}

}  // namespace

int main() {
    try {
        printLibrary();
    } catch (const std::exception& error) {
        std::cerr << "quill1xml-idl: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
