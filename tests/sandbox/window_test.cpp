// What the store shows to people, and how what was published stands.
#include "format.hpp"
#include "sandbox/addresses.hpp"
#include "scenario.hpp"

namespace quill1xml::sandbox {
namespace {

constexpr const char* login = "StoreID=57&UserName=demo&Password=demo";

std::string times(int count, const std::string& before, const std::string& after) {
    std::string out;
    for (int i = 1; i <= count; ++i) out += before + std::to_string(i) + after;
    return out;
}

std::string downloaded(int store, const std::string& records) {
    return "<Store xmlns=\"WebStore\" StoreID=\"" + std::to_string(store) + "\"><Envelope DateCreated=\"NOW\"/>" +
           records + "</Store>";
}

const Scenario scenarios[] = {
    {"ListsHavePagesOfFiftyRows",
     {
         {"POST /upload", store(times(120, "<Product SKU='P", "'/>") + "<Product SKU='P7' Deleted='1'/>"), 200,
          accepted(1)},
         {"PAGE /products", "", 200, "*<h1>Products <small>119</small>*>P51</a>*<span>Page 1 of 3</span>*page=2*"},
         {"PAGE /products?page=2", "", 200, "*>P52</a>*>P101</a>*<span>Page 2 of 3</span>*page=3*"},
         {"PAGE /products?page=99", "", 200, "*>P102</a>*>P120</a>*<span>Page 3 of 3</span>*"},
         {"PAGE /records?kind=Product&page=3", "", 200, "*<h1>Product <small>121</small>*>P21<*>P1<*"},
         {"PAGE /products?page=0", "", 400, "*<h1>page must be at least 1</h1>*"},
         {"PAGE /products?page=1x", "", 400, "*<h1>page must be a whole number</h1>*"},
         {"PAGE /products?page=x", "", 400, "*<h1>page must be a whole number</h1>*"},
     }},
    {"SearchTakesItsTextLiterally",
     {
         {"POST /upload",
          store("<Product SKU='A' Description='50% &lt;b&gt;'/><Product SKU='B' Description='500 b'/><Product SKU='C' "
                "ThumbNailFile='50AA'/><Order OrderNumber='1'><OrderLineItem SKU='X50%'/></Order>"),
          200, accepted(1)},
         {"PAGE /products?q=50%25", "", 200, "*<h1>Products <small>1 with “50%”</small>*>50% &lt;b&gt;</a>*"},
         {"PAGE /products?q=%22%3E%3Cscript%3E", "", 200, "*value=\"&quot;&gt;&lt;script&gt;\"*Nothing found.*"},
         {"PAGE /products?q=50", "", 200, "*<small>2 with*"},
         {"PAGE /orders?q=x50%25", "", 200, "*<h1>Orders <small>1 with*"},
         {"PAGE /orders?q=OrderLineItem", "", 200, "*Nothing found.*"},
         {"POST /upload", store("<Product SKU='x_y'/><Product SKU='xzy'/><Product SKU='x\\y'/>"), 200, accepted(2)},
         {"PAGE /products?q=x_y", "", 200, "*<h1>Products <small>1 with*>x_y</a>*"},
         {"PAGE /products?q=x%5Cy", "", 200, "*<h1>Products <small>1 with*>x\\\\y</a>*"},
         {"PAGE /?q=500", "", 200, "*<h2>Catalogue <small>1 with “500”</small></h2>*</main>*"},
     }},
    {"ACategoryHasTheProductsOfThoseBelow",
     {
         {"POST /upload",
          store("<ProductCategory ProductCategoryID='1' Description='T &amp; C' ParentID='-1'/>"
                "<ProductCategory ProductCategoryID='2' ParentID='1' Description='Tea'/>"
                "<Product SKU='A'/><Product SKU='B'/><Product SKU='C' ShowProduct='0'/><Tax TaxCode='V' Rate='7'/>"
                "<ProductCategoryLink SKU='A' ProductCategoryID='2'/><ProductCategoryLink SKU='C' "
                "ProductCategoryID='2'/>"),
          200, accepted(1)},
         {"PAGE /products?category=1", "", 200, "*<h1>T &amp; C <small>1</small>*>Tea</a>*>A</a>*"},
         {"PAGE /products?category=3", "", 400, "*There is no category &quot;3&quot;*"},
     }},
    {"ProductsStandInTheirRankWithPriceAndPicture",
     {
         {"POST /upload",
          "<Store xmlns='WebStore' StoreID='57' Name='S'>" + std::string(sender) +
              "<ProductCategory ProductCategoryID='1' Description='T'/><ProductCategory ProductCategoryID='2' "
              "ParentID='1' Description='Tea'/><Product SKU='none' Description='C'/>"
              "<Product SKU='second' Ranking='2' LargeImage='b.gif' Price1=' 3'/>"
              "<Product SKU='first' Ranking='1' Description='A'/><Product SKU='zeroth' Ranking='0' "
              "QuantityOnHand='9' ThumbNail='gone.gif'/><ProductCategoryLink SKU='second' ProductCategoryID='2'/>"
              "</Store>",
          200, accepted(1)},
         {"POST /images",
          "<Store UserName='demo' Password='demo' UploadFolder='ProductImages' CreateThumbnail='0'><Image "
          "ImageName='b.gif'>R0lG</Image></Store>",
          200, "<Receipt><Error Number=\"0\" Source=\"\" Description=\"\"/></Receipt>"},
         {"GET /images", "", 200,
          R"([{"folder": "ProductImages", "name": "b.gif", "type": "application/octet-stream", "size": 3,
               "thumbnail": false}])"},
         {"PAGE /products", "", 200, "*>zeroth</a>*class=\"stock few\">9 in stock*>A</a>*>second</a>*3.00*>C</a>*"},
         {"PAGE /products?category=2", "", 200,
          "*<h1>Tea <small>1</small>*‹ T</a>*<img src=\"/images/ProductImages/b%2Egif\"*>second</a>*"},
     }},
    {"EverythingIsEscapedAndPicturesAreNoPages",
     {
         {"POST /upload",
          store("<Product SKU='&lt;i>' Description='&lt;script>' Price1=' .5' QuantityOnHand='0' "
                "ThumbNailFile='PHNjcmlwdD4='><Part Name='&lt;b>'/></Product>"),
          200, accepted(1)},
         {"PAGE /", "", 200, "*&lt;script&gt;</a>*&lt;i&gt;*class=\"stock none\">0 in stock*0.50*"},
         {"PAGE /records/1", "", 200,
          "*<h1>Product &lt;i&gt;</h1>*<code>Price1</code></th><td><div class=\"long\"> "
          ".5</div>*&lt;b&gt;*&lt;Part Name=&quot;*"},
         {"GET /records/1/picture", "", 200, "<script>"},
         {"POST /upload", "<Store xmlns='WebStore'><Envelope UserName='x' Password = 'secret'/>&lt;</Store>", 200,
          wrongLogin},
         {"PAGE /refusals", "", 200, "*<h1>Refused <small>1</small>*>5 Login<*Wrong user name or password.*"},
         {"PAGE /refusals/1", "", 200, "*Password = '…'/&gt;&amp;lt;*"},
         {"GET /refusals", "", 200,
          R"([{"number": 1, "time": "NOW", "endpoint": "/upload", "code": 5, "source": "Login",
               "description": "Wrong user name or password.", "size": 80}])"},
         {"PAGE /imports/1", "", 200, "*/records?import=1&amp;kind=Product*"},
         {"PAGE /records/2", "", 404, "*<h1>There is nothing at GET /records/2</h1>*"},
     }},
    {"AnUpdateAddsToItsOrder",
     {
         {"POST /upload",
          store("<Order OrderNumber='1' OrderStatus='Confirmed' City='Ω' CreditCardPinNumber='12'>"
                "<OrderLineItem LineNumber='1'/></Order>"
                "<Order OrderNumber='1' DispatchedDate='2024' OrderStatus='Dispatched' CreditCardPinNumber=''/>"
                "<Order OrderNumber='2' OrderStatus='Picked'/>"),
          200, accepted(1)},
         {"POST /upload",
          store("<Order OrderNumber='1' WaybillNumber='W'><OrderLineItem LineNumber='1' Q='2'/><OrderLineItem "
                "LineNumber='2'/></Order>"),
          200, accepted(2)},
         {"POST /orders", login, 200,
          downloaded(57,
                     "<Order OrderNumber=\"2\" OrderStatus=\"Picked\"/><Order OrderNumber=\"1\" "
                     "OrderStatus=\"Dispatched\" City=\"Ω\" CreditCardPinNumber=\"12\" DispatchedDate=\"2024\" "
                     "WaybillNumber=\"W\"><OrderLineItem LineNumber=\"1\" Q=\"2\"/><OrderLineItem LineNumber=\"2\"/>"
                     "</Order>")},
         {"POST /upload",
          store("<Order OrderNumber='3' City='a'><UserDefinedFieldValue FieldName='F' FieldValue='1'/></Order>"
                "<Order OrderNumber='3' OrderStatus='Picked'><UserDefinedFieldValue FieldName='F' FieldValue='2'/>"
                "<UserDefinedFieldValue FieldName='G'/></Order><Order City='b'/><Order OrderStatus='Picked'/>"),
          200, accepted(3)},
         {"POST /orders", login, 200,
          "<Store*<Order OrderNumber=\"3\" City=\"a\" OrderStatus=\"Picked\"><UserDefinedFieldValue FieldName=\"F\" "
          "FieldValue=\"2\"/><UserDefinedFieldValue FieldName=\"G\"/></Order><Order City=\"b\"/><Order "
          "OrderStatus=\"Picked\"/></Store>"},
         {"POST /upload", store("<Order OrderNumber='3' Deleted='1'/>"), 200, accepted(4)},
         {"PAGE /orders?q=Ω", "", 200, "*>1</a>*Dispatched*"},
         {"POST /upload", store("<Order OrderNumber='1' City='whole'/>"), 200, accepted(5)},
         {"POST /upload", store("<Order OrderNumber='2' Deleted='1'/><Order OrderNumber='2' OrderStatus='Picked'/>"),
          200, accepted(6)},
         {"POST /orders", login, 200,
          downloaded(57,
                     "<Order City=\"b\"/><Order OrderStatus=\"Picked\"/><Order OrderNumber=\"1\" City=\"whole\"/>"
                     "<Order OrderNumber=\"2\" OrderStatus=\"Picked\"/>")},
     }},
    {"EveryStoreHasItsOwn",
     {
         {"POST /upload", store("<Quote QuoteNumber='1' Currency='EUR' City='C'/><Quote QuoteNumber='2'/>"), 200,
          accepted(1)},
         {"POST /upload", store("<Quote QuoteNumber='1' Currency='DKK'/>", 58), 200, accepted(2)},
         {"POST /quotations", login, 200,
          downloaded(57, "<Quote QuoteNumber=\"1\" QuoteCurrency=\"EUR\" City=\"C\"/><Quote QuoteNumber=\"2\"/>")},
         {"POST /quotations", "StoreID=58&UserName=demo&Password=demo", 200,
          downloaded(58, "<Quote QuoteNumber=\"1\" QuoteCurrency=\"DKK\"/>")},
         {"POST /quotations", "StoreID=59&UserName=demo&Password=demo", 200, downloaded(59, "")},
         {"PAGE /quotations", "", 200, "*<strong>Store 58</strong>*<h1>Quotations <small>1</small>*DKK*"},
         {"PAGE /quotations?store=57", "", 200, "*<h1>Quotations <small>2</small>*"},
     }},
};

class Window : public ::testing::TestWithParam<Scenario> {};

TEST_P(Window, Scenario) {
    Server server(testFormat(), {});
    play(server, GetParam().exchanges);
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Window, ::testing::ValuesIn(scenarios),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

TEST(SandboxWindow, AnswersEveryAddressItLists) {
    Server server(testFormat(), {.seed = true});
    httplib::Client client("127.0.0.1", server.port());
    const std::string front = client.Get("/").value().body;
    for (const Address& address : addresses()) {
        EXPECT_NE(front.find(address.path), std::string::npos) << address.path;
        if (address.method != "GET" || address.path.find("N") != std::string::npos) continue;
        EXPECT_EQ(client.Get(std::string(address.path).c_str()).value().status, 200) << address.path;
    }
    EXPECT_EQ(client.Get("/").value().get_header_value("X-Content-Type-Options"), "nosniff");
}

TEST(SandboxWindow, LetsNoBrowserTakeAPictureForAPage) {
    Server server(testFormat(), {});
    httplib::Client client("127.0.0.1", server.port());
    play(server, {{"POST /upload", store("<Product SKU='A' ThumbNailFile='PHNjcmlwdD4='/>"), 200, accepted(1)},
                  {"POST /images",
                   "<Store UserName='demo' Password='demo' UploadFolder='F'><Image "
                   "ImageName='a.gif'>PHNjcmlwdD4=</Image></Store>",
                   200, "<Receipt>*"}});
    for (const char* address : {"/records/1/picture", "/images/F/a.gif"}) {
        const httplib::Response picture = client.Get(address).value();
        EXPECT_EQ(picture.body, "<script>");
        EXPECT_EQ(picture.get_header_value("Content-Type"), "application/octet-stream");
        EXPECT_EQ(picture.get_header_value("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(picture.get_header_value("Content-Security-Policy"), "default-src 'none'; sandbox");
    }
}

}  // namespace
}  // namespace quill1xml::sandbox
