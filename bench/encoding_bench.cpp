// What encoding text for XML costs, against copying it and against two XML libraries doing the like.
#include "quill1xml/text.hpp"
#include "ratio.hpp"
#include "text/windows_1252.hpp"
#include "text/xml_text.hpp"

#include <libxml/entities.h>
#include <libxml/tree.h>
#include <pugixml.hpp>

#include <cstring>

namespace {

/// Takes what pugixml writes into one buffer.
class Buffer : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override { text_.append(static_cast<const char*>(data), size); }
    std::string& text() { return text_; }

private:
    std::string text_;
};

void addRatios(quill1xml::bench::Ratios& ratios, const std::string& kind, const std::u16string& text) {
    using namespace quill1xml;
    const auto encoder = std::make_shared<XmlText>(windows1252);
    const auto encode = [encoder, text, out = std::make_shared<std::u16string>()] {
        out->clear();
        encoder->encode(*out, text, false);
        benchmark::DoNotOptimize(out->data());
        benchmark::ClobberMemory();
    };
    const auto copy = [text, out = std::make_shared<std::u16string>(text)] {
        std::memcpy(out->data(), text.data(), text.size() * sizeof(char16_t));
        benchmark::DoNotOptimize(out->data());
        benchmark::ClobberMemory();
    };
    const auto libxml = [utf8 = toUtf8(text)] {
        xmlFree(xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(utf8.c_str())));
    };
    const auto document = std::make_shared<pugi::xml_document>();
    document->append_child("a").append_attribute("x").set_value(toUtf8(text).c_str());
    const auto pugixml = [document, out = std::make_shared<Buffer>()] {
        out->text().clear();
        document->first_child().print(*out, "", pugi::format_raw);
        benchmark::DoNotOptimize(out->text().data());
    };
    ratios.add("encode " + kind + " / memcpy", 0, encode, copy);
    ratios.add("encode " + kind + " / libxml2 escaping", 1, encode, libxml);
    ratios.add("encode " + kind + " / pugixml attribute", 0, encode, pugixml);
}

}  // namespace

int main() {
    quill1xml::bench::Ratios ratios;
    const std::u16string plain = u"Stainless steel hinge, 75 mm, brushed, with screws; fits doors of 35 to 45 mm. ";
    addRatios(ratios, "plain text", plain + plain + plain);
    const std::u16string marked = u"Caf\u00E9 \u201CThe Hinge\u201D \u2013 <b>brass & steel</b>, 3' long, \u0416 75. ";
    addRatios(ratios, "marked text", marked + marked + marked + marked);
    ratios.run();
}
