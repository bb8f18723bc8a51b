// The store schema in two dialects, from the elements of the records.

#include "quill1xml/schema.hpp"

#include "records/elements.hpp"

#include <algorithm>
#include <set>

namespace quill1xml {
namespace {

using records::AttributeModel;
using records::AttributeType;
using records::ElementModel;

/// The elements that stand directly below the root, but for the envelope; or those inside another element.
std::vector<const ElementModel*> childrenOf(std::string_view parent) {
    std::vector<const ElementModel*> children;
    for (const ElementModel& element : records::elements()) {
        if (!element.isRoot && element.parent == parent && element.name != "Envelope") children.push_back(&element);
    }
    return children;
}

std::string attributeText(std::string_view name, std::string_view value) {
    std::string text(" ");
    return text.append(name).append("=\"").append(value).append("\"");
}

// ---- XML Schema

// Numbers stand with a leading blank in store documents: xs:double and xs:int collapse white space.
constexpr std::string_view xsdCommonTypes =
    R"(  <xs:simpleType name="NumberOrNone">
    <xs:union memberTypes="xs:double">
      <xs:simpleType><xs:restriction base="xs:string"><xs:maxLength value="0"/></xs:restriction></xs:simpleType>
    </xs:union>
  </xs:simpleType>
  <!-- The separator is that of the sender's regional settings. -->
  <xs:simpleType name="LocalNumber">
    <xs:restriction base="xs:string"><xs:pattern value="-?[0-9]+([^0-9]{1,3}[0-9]+)?(E[+\-][0-9]+)?"/></xs:restriction>
  </xs:simpleType>
)";

/// The name of the simple type of texts of such lengths.
std::string textTypeName(const AttributeModel& attribute) {
    if (attribute.minimum == 0 && !attribute.maximum) return "xs:string";
    std::string name = "Text" + std::to_string(attribute.minimum);
    name += attribute.maximum ? "To" + std::to_string(*attribute.maximum) : "Up";
    return name;
}

std::string xsdTypeName(const AttributeModel& attribute) {
    switch (attribute.type) {
        case AttributeType::text: return textTypeName(attribute);
        case AttributeType::flag:
        case AttributeType::integer: return "xs:int";
        case AttributeType::number: return attribute.mayBeEmpty ? "NumberOrNone" : "xs:double";
        case AttributeType::localNumber: return "LocalNumber";
        case AttributeType::dateTime: return "xs:dateTime";
        case AttributeType::base64: return "xs:base64Binary";
    }
    return "xs:string";
}

std::string xsdTextTypes() {
    std::string types;
    std::set<std::string> named;
    for (const ElementModel& element : records::elements()) {
        for (const AttributeModel& attribute : element.attributes) {
            const std::string name = textTypeName(attribute);
            if (attribute.type != AttributeType::text || !attribute.words.empty() || name == "xs:string") continue;
            if (!named.insert(name).second) continue;
            types += "  <xs:simpleType" + attributeText("name", name) + "><xs:restriction base=\"xs:string\">";
            if (attribute.minimum > 0) {
                types += "<xs:minLength" + attributeText("value", std::to_string(attribute.minimum)) + "/>";
            }
            if (attribute.maximum) {
                types += "<xs:maxLength" + attributeText("value", std::to_string(*attribute.maximum)) + "/>";
            }
            types += "</xs:restriction></xs:simpleType>\n";
        }
    }
    return types;
}

std::string xsdAttribute(const AttributeModel& attribute) {
    std::string text = "      <xs:attribute" + attributeText("name", attribute.name);
    if (attribute.required) text += " use=\"required\"";
    if (attribute.words.empty()) return text + attributeText("type", xsdTypeName(attribute)) + "/>\n";
    text += "><xs:simpleType><xs:restriction base=\"xs:string\">";
    for (const std::string& word : attribute.words) text += "<xs:enumeration" + attributeText("value", word) + "/>";
    return text + "</xs:restriction></xs:simpleType></xs:attribute>\n";
}

std::string xsdChoice(const std::vector<const ElementModel*>& children) {
    std::string text = "        <xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\">\n";
    for (const ElementModel* child : children) {
        text += "          <xs:element" + attributeText("ref", child->name) + "/>\n";
    }
    return text + "        </xs:choice>\n";
}

std::string xsdElement(const ElementModel& element) {
    std::string text = "  <xs:element" + attributeText("name", element.name) + ">\n    <xs:complexType>\n";
    const auto children = childrenOf(element.isRoot ? "" : element.name);
    if (!children.empty()) {
        text += "      <xs:sequence>\n";
        if (element.isRoot) text += "        <xs:element ref=\"Envelope\" minOccurs=\"0\"/>\n";
        text += xsdChoice(children) + "      </xs:sequence>\n";
    }
    for (const AttributeModel& attribute : element.attributes) text += xsdAttribute(attribute);
    return text + "    </xs:complexType>\n  </xs:element>\n";
}

std::string xsd() {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" xmlns=\"WebStore\" targetNamespace=\"WebStore\" "
        "elementFormDefault=\"qualified\">\n";
    text += xsdCommonTypes;
    text += xsdTextTypes();
    for (const ElementModel& element : records::elements()) text += xsdElement(element);
    return text + "</xs:schema>\n";
}

// ---- XML-Data Reduced

std::string xdrType(const AttributeModel& attribute) {
    if (!attribute.words.empty()) {
        std::string values;
        for (const std::string& word : attribute.words) values.append(values.empty() ? "" : " ").append(word);
        return " dt:type=\"enumeration\"" + attributeText("dt:values", values);
    }
    if (attribute.mayBeEmpty) return " dt:type=\"string\"";
    switch (attribute.type) {
        case AttributeType::flag:
        case AttributeType::integer: return " dt:type=\"i4\"";
        case AttributeType::dateTime: return " dt:type=\"dateTime\"";
        // The dialect's numbers take no leading blank, no point without a zero before it (" .5") and no separator but
        // the point.
        case AttributeType::number:
        case AttributeType::localNumber: return " dt:type=\"string\"";
        case AttributeType::base64: return " dt:type=\"bin.base64\"";
        case AttributeType::text: break;
    }
    std::string text = " dt:type=\"string\"";
    if (attribute.minimum > 0) text += attributeText("dt:minLength", std::to_string(attribute.minimum));
    if (attribute.maximum) text += attributeText("dt:maxLength", std::to_string(*attribute.maximum));
    return text;
}

/// Attribute types are declared inside their element: declared globally they are taken for namespace-qualified ones.
std::string xdrElement(const ElementModel& element) {
    const auto children = childrenOf(element.isRoot ? "" : element.name);
    std::string text = "  <ElementType" + attributeText("name", element.name) + " model=\"closed\"" +
                       (children.empty() ? " content=\"empty\">\n" : " content=\"eltOnly\" order=\"seq\">\n");
    for (const AttributeModel& attribute : element.attributes) {
        text += "    <AttributeType" + attributeText("name", attribute.name) + xdrType(attribute) +
                (attribute.required ? " required=\"yes\"/>\n" : "/>\n");
    }
    for (const AttributeModel& attribute : element.attributes) {
        text += "    <attribute" + attributeText("type", attribute.name) + "/>\n";
    }
    if (element.isRoot) text += "    <element type=\"Envelope\" minOccurs=\"0\" maxOccurs=\"1\"/>\n";
    if (!children.empty()) {
        // "many" says any elements in any order; not every parser takes a repeated choice of one.
        text += "    <group order=\"many\" minOccurs=\"0\" maxOccurs=\"*\">\n";
        for (const ElementModel* child : children) {
            text += "      <element" + attributeText("type", child->name) + "/>\n";
        }
        text += "    </group>\n";
    }
    return text + "  </ElementType>\n";
}

std::string xdr() {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<Schema name=\"WebStore\" xmlns=\"urn:schemas-microsoft-com:xml-data\" "
        "xmlns:dt=\"urn:schemas-microsoft-com:datatypes\">\n";
    // An element type must be declared before the element that contains it.
    const auto& all = records::elements();
    std::for_each(all.rbegin(), all.rend(), [&text](const ElementModel& element) { text += xdrElement(element); });
    return text + "</Schema>\n";
}

}  // namespace

std::string storeSchema(SchemaDialect dialect) { return dialect == SchemaDialect::xsd ? xsd() : xdr(); }

std::vector<std::string> keyAttributes(std::string_view element) {
    std::vector<std::string> names;
    const auto& all = records::elements();
    const auto found = std::ranges::find(all, element, &ElementModel::name);
    if (found == all.end() || found->isRoot) return names;
    for (const AttributeModel& attribute : found->attributes) {
        if (attribute.required) names.push_back(attribute.name);
    }
    return names;
}

}  // namespace quill1xml
