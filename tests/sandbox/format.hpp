// A small format of store documents for the tests of the sandbox, apart from the real records.
#pragma once

#include "sandbox/server.hpp"

namespace quill1xml::sandbox {

inline Format testFormat() {
    return {.xsd = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" targetNamespace="WebStore"
                                 xmlns="WebStore" elementFormDefault="qualified">
              <xs:element name="Store"><xs:complexType>
                <xs:sequence>
                  <xs:element name="Envelope" minOccurs="0"><xs:complexType>
                    <xs:attribute name="UserName"/><xs:attribute name="Password"/>
                  </xs:complexType></xs:element>
                  <xs:choice minOccurs="0" maxOccurs="unbounded">
                    <xs:element name="Tax"><xs:complexType>
                      <xs:attribute name="TaxCode" use="required"/>
                      <xs:attribute name="CountryCode"/>
                      <xs:attribute name="Description"/>
                      <xs:attribute name="Rate" type="xs:decimal"/>
                    </xs:complexType></xs:element>
                    <xs:element name="Order" type="Free"/>
                    <xs:element name="Quote" type="Free"/>
                    <xs:element name="DebtorStaff" type="Free"/>
                    <xs:element name="Product" type="Free"/>
                    <xs:element name="ProductCategory" type="Free"/>
                    <xs:element name="ProductCategoryLink" type="Free"/>
                  </xs:choice>
                </xs:sequence>
                <xs:attribute name="StoreID" type="xs:int" use="required"/>
                <xs:attribute name="Name"/>
              </xs:complexType></xs:element>
              <xs:complexType name="Free">
                <xs:sequence><xs:any minOccurs="0" maxOccurs="unbounded" processContents="skip"/></xs:sequence>
                <xs:anyAttribute processContents="skip"/>
              </xs:complexType>
            </xs:schema>)",
            .xdr = "<Schema xmlns=\"urn:schemas-microsoft-com:xml-data\"/>",
            .keyAttributes = [](std::string_view element) -> std::vector<std::string> {
                if (element == "Tax") return {"TaxCode", "CountryCode"};
                if (element == "Order") return {"OrderNumber"};
                if (element == "Quote") return {"QuoteNumber"};
                if (element == "DebtorStaff") return {"EMailAddress"};
                if (element == "Product") return {"SKU"};
                if (element == "ProductCategory") return {"ProductCategoryID"};
                if (element == "ProductCategoryLink") return {"SKU", "ProductCategoryID"};
                return {};
            }};
}

}  // namespace quill1xml::sandbox
