// What a host pays for the server, against the bare calls of the system for the same bytes, in one process.
#include "automation/classes.hpp"
#include "hosts/client.hpp"
#include "print_ratio.hpp"
#include "store/schema_source.hpp"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace quill1xml;
using namespace quill1xml::testing;
using quill1xml::platform::createObject;

using Operation = std::function<void()>;

void require(bool success) {
    if (!success) std::abort();
}

void check(HRESULT result) { require(SUCCEEDED(result)); }

double microseconds(const Operation& operation, int times) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER start;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    for (int i = 0; i < times; ++i) operation();
    QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - start.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart) / times;
}

/// The time that one in ten undercuts: other programs on the machine only ever add.
double usual(std::vector<double> values) {
    const auto tenth = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 10);
    std::nth_element(values.begin(), tenth, values.end());
    return *tenth;
}

/// Prints a ratio of rounds in which both take turns.
void compare(
    const std::string& name, double target, int times, const Operation& subject, const Operation& baseline,
    const Operation& prepare = [] {}) {
    constexpr int rounds = 150;
    std::vector<double> subjects;
    std::vector<double> baselines;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        subjects.push_back(microseconds(subject, times));
        baselines.push_back(microseconds(baseline, times));
    }
    bench::printRatio(name, target, usual(subjects), usual(baselines), "us");
}

// ---- Records

/// A value such as a host would pass for a parameter, in its type. Some texts are read as numbers, some name files.
Arg valueFor(const Parameter& parameter, std::size_t index) {
    const auto number = static_cast<int>(index);
    switch (parameter.type) {
        case ParameterType::text:
        case ParameterType::variantText:
            if (parameter.name.ends_with("File")) return u"StringDefault";
            return toUtf16(std::to_string(10000 + index)).c_str();
        case ParameterType::floating: return number + 0.5;
        case ParameterType::boolean: return true;
        case ParameterType::date: return Arg::of(VT_DATE, [](VARIANT& value) { value.date = 45351.5; });
        case ParameterType::currency: return Arg::of(VT_CY, [](VARIANT& value) { value.cyVal.int64 = 125000; });
        case ParameterType::integer:
        case ParameterType::variantInteger: return Arg::of(VT_I2, [](VARIANT& value) { value.iVal = 1; });
        default: return number;
    }
}

/// One call of a member with all its parameters, put together once and made over and over, as a script makes it: the
/// names first, then the call.
class PreparedCall {
public:
    PreparedCall(IDispatch* object, const char16_t* member, bool byName) : object_(object) {
        const automation::Member& declared = *automation::findMember(automation::storeClass(), Text(member));
        const std::size_t count = declared.parameters.size();
        texts_.emplace_back(member);
        for (std::size_t i = 0; i < count; ++i) {
            args_.push_back(valueFor(declared.parameters[i], i));
            if (byName) texts_.push_back(toUtf16(declared.parameters[i].name));
        }
        for (std::size_t i = count; i-- > 0;) values_.push_back(args_[i].get());
        for (const auto& text : texts_) names_.push_back(const_cast<wchar_t*>(com::wide(text.c_str())));
        ids_.resize(names_.size());
        named_.resize(names_.size() - 1);
    }

    void operator()() {
        check(object_->GetIDsOfNames(IID_NULL, names_.data(), static_cast<UINT>(names_.size()), english, ids_.data()));
        std::reverse_copy(ids_.begin() + 1, ids_.end(), named_.begin());
        DISPPARAMS given{values_.data(), named_.data(), static_cast<UINT>(values_.size()),
                         static_cast<UINT>(named_.size())};
        EXCEPINFO details{};
        if (SUCCEEDED(object_->Invoke(ids_[0], IID_NULL, english, DISPATCH_METHOD, &given, nullptr, &details, nullptr)))
            return;
        std::fputws(details.bstrDescription, stderr);
        std::abort();
    }

private:
    IDispatch* object_;
    std::vector<Arg> args_;
    std::vector<VARIANT> values_;
    std::vector<std::u16string> texts_;
    std::vector<wchar_t*> names_;
    std::vector<DISPID> ids_;
    std::vector<DISPID> named_;
};

/// The bare work: open, seek, write, close.
void append(const std::wstring& name, const std::string& bytes) {
    HANDLE const file =
        CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    require(file != INVALID_HANDLE_VALUE);
    DWORD written = 0;
    require(SetFilePointerEx(file, {}, nullptr, FILE_END) != 0);
    require(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0);
    CloseHandle(file);
}

/// A record that takes some calls, all their parameters given by name or by place.
void compareRecord(const LoadedServer& server, const std::string& kind, std::initializer_list<const char16_t*> members,
                   bool byName, double target) {
    const TempFolder folder;
    const auto store = server.create("Store");
    mustCall(store.get(), u"SetTempFilePath", {folder.name(u"").c_str()});
    std::vector<PreparedCall> calls;
    for (const char16_t* const member : members) calls.emplace_back(store.get(), member, byName);
    const auto add = [&calls] {
        for (PreparedCall& call : calls) call();
    };
    add();
    // Both names are as long.
    const std::u16string packetFile = u"WebStore" + toUtf16(kind) + u"1.tmp";
    const auto packetName = folder.path() / packetFile;
    const auto bareName = std::filesystem::path(packetName).replace_extension(L".bar");
    const std::string record = folder.bytes(packetFile).substr(2);
    const auto shorten = [&] {
        for (const auto& name : {packetName, bareName}) {
            std::filesystem::remove(name);
            append(name, "\xFF\xFE");
        }
    };
    compare(
        kind + (byName ? " by name" : " by place") + " / open, seek, write, close", target, 20, add,
        [&] { append(bareName, record); }, shorten);
}

// ---- Documents

struct Documents {
    std::u16string text;
    std::shared_ptr<ports::Schema> schema;
    com::ComPtr<IXMLDOMSchemaCollection> collection;
};

/// A document as a packet becomes one, and the store's schema.
Documents documents() {
    Documents result;
    result.text = u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n<Store xmlns=\"WebStore\" StoreID=\"1\">\r\n";
    for (int i = 0; i < 500; ++i) {
        result.text += u"<Tax TaxCode=\"T" + toUtf16(std::to_string(i)) +
                       u"\" Description=\"Value added tax\" Rate=\" 14.5\" CountryCode=\"ZA\"/>";
    }
    result.text += u"</Store>";
    const char* const file = std::getenv("QUILL1XML_SCHEMA");
    require(file != nullptr);
    const auto environment = ports::systemEnvironment();
    result.schema = store::SchemaSource().load(environment, toUtf16(file));
    result.collection = dynamic_cast<platform::MsxmlSchema&>(*result.schema).collection;
    return result;
}

com::ComPtr<IXMLDOMDocument2> bareParse(const Documents& given) {
    auto document = createObject<IXMLDOMDocument2>(platform::documentClass6, platform::iidXmlDomDocument2);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    check(document->put_async(VARIANT_FALSE));
    check(document->put_validateOnParse(VARIANT_FALSE));
    check(document->put_resolveExternals(VARIANT_FALSE));
    check(document->putref_schemas(com::Variant(static_cast<IDispatch*>(given.collection.get())).get()));
    check(document->loadXML(com::Bstr(Text(given.text)).get(), &loaded));
    require(loaded != VARIANT_FALSE);
    return document;
}

void compareDocuments() {
    const Documents given = documents();
    const auto environment = ports::systemEnvironment();
    const std::vector<Text> pieces{given.text};
    ports::ParseError error;
    const auto parse = [&] {
        auto document = environment.xml->parse(pieces, given.schema, error);
        require(document != nullptr);
        return document;
    };
    const auto document = parse();
    const auto bare = bareParse(given);
    compare(
        "parse / MSXML", 0, 1, [&] { parse(); }, [&] { bareParse(given); });
    compare(
        "validate / MSXML", 0, 1, [&] { require(!document->validate()); },
        [&] {
            com::ComPtr<IXMLDOMParseError> found;
            check(bare->validate(found.put()));
        });
    compare(
        "xml / MSXML", 0, 1, [&] { document->xml(); },
        [&] {
            com::Bstr text;
            check(bare->get_xml(text.put()));
        });

    const std::u16string address = toUtf16(std::getenv("QUILL1XML_STORE_URL")) + u"/nothing";
    const std::string body = document->utf8();
    compare(
        "post / MSXML", 0, 1, [&] { environment.http->post(address, "text/xml", body); },
        [&] {
            const auto request = createObject<IXMLHTTPRequest>(u"MSXML2.XMLHTTP", platform::iidXmlHttpRequest);
            long status = 0;
            com::Variant reply;
            check(request->open(com::Bstr(u"POST").get(), com::Bstr(Text(address)).get(), com::Variant(false).get(),
                                com::Variant().get(), com::Variant().get()));
            check(request->setRequestHeader(com::Bstr(u"Content-Type").get(), com::Bstr(u"text/xml").get()));
            check(request->send(com::Variant::ofBytes(std::as_bytes(std::span(body))).get()));
            check(request->get_status(&status));
            check(request->get_responseBody(reply.put()));
        });
}

}  // namespace

int main() {
    check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    {
        const LoadedServer server;
        for (const bool byName : {false, true}) {
            compareRecord(server, "Tax", {u"AddTax"}, byName, 1.10);
            compareRecord(server, "Product", {u"AddProduct", u"AddProductAdditional", u"LockProduct"}, byName, 1.25);
        }
    }
    compareDocuments();
    CoUninitialize();
}
