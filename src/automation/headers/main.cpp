// Writes a public header as it is installed: the declarations that it reads are laid out, each with what the manual
// says of it, so that an editor shows it. No macro is left, which might be one of the reader's own.
//
//     quill1xml-headers include/quill1xml/arguments.hpp arguments.hpp

#include "automation/classes.hpp"
#include "quill1xml/text.hpp"
#include "records/condition_text.hpp"
#include "records/record.hpp"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using namespace quill1xml;
using namespace quill1xml::automation;

constexpr std::size_t lineLength = 120;

// ---- The declarations, row by row

enum class Kind : std::uint8_t { begin, required, option, collection, end };

/// A row as it is written: what stands for a type or a value is its text.
struct Row {
    Kind kind = Kind::end;
    std::string_view type{};
    std::string_view name{};
    std::string_view value{};
};

#define REQUIRED(Type, name) {Kind::required, #Type, #name},
#define OPTION(Type, name, defaultValue) {Kind::option, #Type, #name, #defaultValue},
#define END(Name) {Kind::end, {}, #Name},
#define METHOD(dispid, Result, Name, summary) {Kind::begin, #Result, #Name},
constexpr Row methods[] = {
#include "quill1xml/methods/all.def"
};

#define REQUIRED(Type, name) {Kind::required, #Type, #name},
#define OPTION(Type, name, defaultValue) {Kind::option, #Type, #name, #defaultValue},
#define END(Name) {Kind::end, {}, #Name},
#define LIST(Name, Method) {Kind::begin, #Method, #Name},
constexpr Row lists[] = {
#include "quill1xml/lists/all.def"
};

#define PROPERTY(dispid, Type, Name, ...) {Kind::required, #Type, #Name},
#define COLLECTION(dispid, Name, Class, child, builder) {Kind::collection, #Class, #Name},
constexpr Row customer[] = {
#include "quill1xml/entities/customer.def"
};
constexpr Row order[] = {
#include "quill1xml/entities/order.def"
};
constexpr Row orderLineItem[] = {
#include "quill1xml/entities/order_line_item.def"
};
constexpr Row quotation[] = {
#include "quill1xml/entities/quotation.def"
};
constexpr Row quotationLineItem[] = {
#include "quill1xml/entities/quotation_line_item.def"
};
constexpr Row userDefinedField[] = {
#include "quill1xml/entities/user_defined_field.def"
};
#undef PROPERTY
#undef COLLECTION

using Rows = std::span<const Row>;

// ---- What is said of them

/// A comment in lines that fit.
void printComment(std::ostream& out, std::string_view indent, std::string_view text) {
    const std::size_t room = lineLength - indent.size() - 4;
    while (!text.empty()) {
        std::size_t end = text.size();
        if (end > room) end = text.rfind(' ', room);
        if (end == std::string_view::npos) end = text.size();
        out << indent << "/// " << text.substr(0, end) << '\n';
        text.remove_prefix(std::min(text.size(), end + 1));
    }
}

const Member& memberNamed(const Class& of, std::string_view name) {
    const Member* const member = findMember(of, name);
    if (member == nullptr) throw std::logic_error("no member " + std::string(name));
    return *member;
}

std::string aboutMember(const Member& member) {
    return (member.dispid >= firstExtension ? "Extension. " : "") + std::string(member.summary);
}

std::string conditionOf(const records::Record& record, const records::Row& row) {
    std::string text;
    for (const auto& [test, field, other] : row.conditions()) {
        if (!text.empty()) text += row.any ? " or " : " and ";
        if (!row.field.present || field.offset != row.field.offset) {
            text.append(records::parameterAt(record.parameters, field)).append(" is ");
        }
        text.append(records::textOf(test)).append(records::parameterAt(record.parameters, other));
    }
    return text;
}

/// What becomes of a parameter: its attributes and their conditions.
std::string usesOf(const records::Record* record, std::string_view parameter) {
    std::string text;
    if (record == nullptr) return text;
    for (const records::Row& row : record->rows) {
        if (records::parameterAt(record->parameters, row.field) != parameter) continue;
        const std::string condition = conditionOf(*record, row);
        const std::string_view when = row.isChecked() ? "must be " : "when ";
        if (row.writes()) text.append(" Attribute ").append(toUtf8(row.name()));
        if (condition.empty()) {
            text += '.';
        } else {
            text.append(row.writes() ? ", " : " Refused otherwise: ").append(when).append(condition).append(".");
        }
    }
    return text;
}

std::string aboutParameter(const Row& row, const records::Record* record) {
    return (row.kind == Kind::required ? "Required." : "Optional.") + usesOf(record, row.name);
}

// ---- How they are laid out

void printArguments(std::ostream& out) {
    const Member* member = nullptr;
    for (const Row& row : methods) {
        switch (row.kind) {
            case Kind::begin:
                member = &memberNamed(storeClass(), row.name);
                printComment(out, "", aboutMember(*member));
                out << "struct " << row.name << " {\n";
                break;
            case Kind::end: out << "};\n\n"; break;
            default:
                printComment(out, "    ", aboutParameter(row, member->record));
                out << "    " << row.type << ' ' << row.name << '{' << row.value << "};\n";
        }
    }
}

void printMethods(std::ostream& out) {
    for (const Row& row : methods) {
        if (row.kind != Kind::begin) continue;
        printComment(out, "    ", aboutMember(memberNamed(storeClass(), row.name)));
        out << "    " << row.type << ' ' << row.name << "(const arguments::" << row.name << "& arguments = {});\n\n";
    }
}

void printLists(std::ostream& out) {
    const records::Record* record = nullptr;
    for (const Row& row : lists) {
        switch (row.kind) {
            case Kind::begin:
                record = memberNamed(storeClass(), row.type).record;
                printComment(out, "", "The parameter list of " + std::string(row.type) + ".");
                out << "struct " << row.name << " {\n";
                break;
            case Kind::end: out << "\n    /// The list as XML.\n    std::u16string xml() const;\n};\n\n"; break;
            default:
                printComment(out, "    ", usesOf(record, row.name).substr(1));
                out << "    " << row.type << ' ' << row.name << "{absent<" << row.type << ">};\n";
        }
    }
}

void printProperties(std::ostream& out, const Class& of, Rows rows) {
    for (const Row& row : rows) {
        printComment(out, "    ", memberNamed(of, row.name).summary);
        const bool collection = row.kind == Kind::collection;
        out << "    " << (collection ? "std::vector<" : "property_types::") << row.type << (collection ? "> " : " ")
            << row.name << "() const;\n\n";
    }
}

/// What takes the place of declarations in a header.
void printDeclarations(std::ostream& out, std::string_view header, std::string_view declarations) {
    const auto are = [&](std::string_view name) { return declarations == std::string("quill1xml/").append(name); };
    if (are("methods/all.def") && header == "arguments.hpp") return printArguments(out);
    if (are("methods/all.def") && header == "store.hpp") return printMethods(out);
    if (are("lists/all.def") && header == "lists.hpp") return printLists(out);
    const struct {
        std::string_view name;
        const Class& of;
        Rows rows;
    } entities[] = {{"entities/customer.def", customerClass(), customer},
                    {"entities/order.def", orderClass(), order},
                    {"entities/order_line_item.def", orderLineItemClass(), orderLineItem},
                    {"entities/quotation.def", quotationClass(), quotation},
                    {"entities/quotation_line_item.def", quotationLineItemClass(), quotationLineItem},
                    {"entities/user_defined_field.def", userDefinedFieldClass(), userDefinedField}};
    for (const auto& entity : entities) {
        if (are(entity.name) && header == "entities.hpp") return printProperties(out, entity.of, entity.rows);
    }
    throw std::logic_error("nothing takes the place of " + std::string(declarations));
}

bool isDirective(std::string_view line) { return line.starts_with("#define ") || line.starts_with("#undef "); }

void expand(std::istream& in, std::ostream& out, std::string_view header) {
    constexpr std::string_view include = "#include \"";
    bool directive = false;
    for (std::string line; std::getline(in, line);) {
        // Which may go on, over lines that end in a backslash.
        directive = directive || isDirective(line);
        const bool dropped = directive;
        directive = directive && line.ends_with('\\');
        if (dropped) continue;
        if (line.starts_with(include) && line.ends_with(".def\"")) {
            const std::string_view name = line;
            printDeclarations(out, header, name.substr(include.size(), name.size() - include.size() - 1));
        } else {
            out << line << '\n';
        }
    }
}

void write(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::ifstream in(from);
    if (!in) throw std::runtime_error("cannot read " + from.string());
    std::ofstream out(to);
    expand(in, out, from.filename().string());
    out.close();
    if (in.bad() || !out) throw std::runtime_error("cannot write " + to.string());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: quill1xml-headers HEADER OUTPUT\n";
        return EXIT_FAILURE;
    }
    try {
        write(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "quill1xml-headers: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
