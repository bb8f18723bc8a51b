#include "format.hpp"
#include "sandbox/image.hpp"
#include "sandbox/receipt.hpp"
#include "scenario.hpp"

#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

constexpr const char* login = "StoreID=57&UserName=demo&Password=demo";
const std::string imageTaken = "<Receipt><Error Number=\"0\" Source=\"\" Description=\"\"/></Receipt>";

std::string downloaded(const std::string& records) {
    return "<Store xmlns=\"WebStore\" StoreID=\"57\"><Envelope DateCreated=\"NOW\"/>" + records + "</Store>";
}

/// An image request as clients serialise it.
std::string image(const std::string& name, const std::string& base64, const std::string& attributes = "",
                  const std::string& password = "demo", const std::string& folder = "ProductImages") {
    return "<?xml version=\"1.0\"?>\r\n<Store xmlns:dt=\"urn:schemas-microsoft-com:datatypes\" StoreID=\"57\" "
           "UserName=\"demo\" Password=\"" +
           password + "\" CreateThumbnail=\"1\" UploadFolder=\"" + folder + "\"" + attributes + "><Image ImageName=\"" +
           name + "\" dt:dt=\"bin.base64\">" + base64 + "</Image></Store>\r\n";
}

const Scenario scenarios[] = {
    {"FormsAreTakenLiterally",
     {
         {"POST /customers", "", 200, wrongLogin},
         {"POST /quotations", "Password=demo&&UserName=demo&More&StoreID=57&StoreID=58", 200, downloaded("")},
         {"POST /orders", "StoreID=57&UserName=demo&Password=Demo", 200, wrongLogin},
         {"POST /orders", "StoreID=57&UserName=demo&Password=d%65mo", 200, wrongLogin},
         {"POST /quotations", "StoreID=57&UserName=demo&Password=demo=", 200, wrongLogin},
         {"POST /orders", "StoreID=57x&UserName=demo&Password=demo", 200,
          refused(4, "Request", "The form has no StoreID that is a number.")},
         {"POST /orders", "StoreID=2147483648&UserName=demo&Password=demo", 200, refused(4, "Request", "*")},
         {"POST /offline-products", "StoreID=57", 200, refused(4, "Request", "The form names no customer.")},
     }},
    {"PublishedRecordsComeBack",
     {
         {"POST /upload",
          store("<DebtorStaff EMailAddress='a@b' Name='Zoë &amp; &quot;Ω&quot;'/><DebtorStaff EMailAddress='c@d'/>"
                "<Order OrderNumber='1' EMailAddress='a@b'><OrderLineItem LineNumber='1'/></Order>"
                "<Order OrderNumber='2' EMailAddress='a+b@b'/><Quote QuoteNumber='1'/><Quote/><Quote/>"),
          200, accepted(1)},
         {"POST /customers", login, 200,
          downloaded("<DebtorStaff EMailAddress=\"a@b\" Name=\"Zoë &amp; &quot;Ω&quot;\"/>"
                     "<DebtorStaff EMailAddress=\"c@d\"/>")},
         {"POST /orders", login, 200,
          downloaded("<Order OrderNumber=\"1\" EMailAddress=\"a@b\"><OrderLineItem LineNumber=\"1\"/></Order>"
                     "<Order OrderNumber=\"2\" EMailAddress=\"a+b@b\"/>")},
         {"POST /quotations", login, 200, downloaded("<Quote QuoteNumber=\"1\"/><Quote/><Quote/>")},
         {"POST /offline-products", "StoreID=57&CustomerEmailAddress=a+b@b", 200,
          downloaded("<Order OrderNumber=\"2\" EMailAddress=\"a+b@b\"/>")},
     }},
    {"TheLatestRecordOfAKeyWins",
     {
         {"POST /upload", store("<Order OrderNumber='1' S='a'/><Order OrderNumber='2'/><Order OrderNumber='1' S='b'/>"),
          200, accepted(1)},
         {"POST /orders", login, 200, downloaded("<Order OrderNumber=\"2\"/><Order OrderNumber=\"1\" S=\"b\"/>")},
         {"POST /upload", store("<Order OrderNumber='1' Deleted='1'/><Order OrderNumber='2' Deleted='0'/>"), 200,
          accepted(2)},
         {"POST /orders", login, 200, downloaded("<Order OrderNumber=\"2\" Deleted=\"0\"/>")},
         {"POST /upload", store("<Order OrderNumber='1' S='c'/>"), 200, accepted(3)},
         {"POST /orders", login, 200,
          downloaded("<Order OrderNumber=\"2\" Deleted=\"0\"/><Order OrderNumber=\"1\" S=\"c\"/>")},
     }},
    {"SampleDataComesOnceAndGivesWayToWhatIsPublished",
     {
         {"POST /upload", store("<Order OrderNumber='1'/>"), 200, accepted(1)},
         {"POST /seed", "", 200, R"({"records": 12})"},
         {"POST /seed", "", 200, R"({"records": 0})"},
         {"GET /kinds", "", 200, R"({"Order": 5, "DebtorStaff": 6, "Quote": 2})"},
         {"POST /customers", login, 200,
          "*\"Олена Шевченко\"*\"田中 美咲\"*\"Conor O'Brien\"*\"🌸 Blüten &amp; Söhne\"*"},
         {"POST /offline-products", "StoreID=57&CustomerEmailAddress=misaki.tanaka@example.com", 200,
          "<Store*<Order OrderNumber=\"1003\"*Description=\"和紙 &amp; 封筒セット\"/>*</Order></Store>"},
         {"POST /upload", store("<Quote QuoteNumber='501' Deleted='1'/><Quote QuoteNumber='502'/>"), 200, accepted(2)},
         {"POST /quotations", login, 200, downloaded("<Quote QuoteNumber=\"502\"/>")},
     }},
    {"ImagesAreKeptReplacedAndDeleted",
     {
         {"POST /images", image("Å & b.gif", "R0lG\r\nODlh\n"), 200, refused(1, "Images", "*")},
         {"POST /images", image("Å &amp; b.gif", "R0lG\r\nODlh\n"), 200, imageTaken},
         {"POST /images", image("a.bin", "/+8="), 200, imageTaken},
         {"GET /images", "", 200,
          R"([{"folder": "ProductImages", "name": "a.bin", "type": "application/octet-stream", "size": 2,
               "thumbnail": true},
              {"folder": "ProductImages", "name": "Å & b.gif", "type": "image/gif", "size": 6, "thumbnail": true}])"},
         {"GET /images/ProductImages/a.bin", "", 200, "\xFF\xEF"},
         {"GET /images/ProductImages/%C3%85%20%26%20b.gif", "", 200, "GIF89a"},
         {"PAGE /images", "", 200, "*<img src=\"/images/ProductImages/%C3%85%20%26%20b%2Egif\"*>Å &amp; b.gif</a>*"},
         {"POST /images", image("a.bin", ""), 200, imageTaken},
         {"GET /images/ProductImages/a.bin", "", 200, ""},
         {"POST /images", image("Å &amp; b.gif", "", " Deleted=\"True\""), 200, imageTaken},
         {"POST /images", image("none.gif", "", " Deleted=\"-1\""), 200, imageTaken},
         {"GET /images/ProductImages/%C3%85%20%26%20b.gif", "", 404,
          R"({"error": "There is nothing at GET /images/ProductImages/Å & b.gif"})"},
         {"GET /images", "", 200,
          R"([{"folder": "ProductImages", "name": "a.bin", "type": "application/octet-stream", "size": 0,
               "thumbnail": true}])"},
     }},
    {"ImageRequestsAreRefused",
     {
         {"POST /images", image("a.gif", "AAAA", "", "guess"), 200, wrongLogin},
         {"POST /images", image("../a.gif", "AAAA"), 200,
          refused(6, "Images", "The image name &quot;../a.gif&quot; is not a plain name.")},
         {"POST /images", image("a\\b.gif", "AAAA"), 200, refused(6, "Images", "The image name*")},
         {"POST /images", image("", "AAAA"), 200, refused(6, "Images", "The image name*")},
         {"POST /images", image("a.gif", "AAAA", "", "demo", ".."), 200, refused(6, "Images", "The folder*")},
         {"POST /images", image("a.gif", "AAA"), 200, refused(6, "Images", "The image is not in base64.")},
         {"POST /images", "<Store/>", 200, refused(6, "Images", "An image request has one Image element.")},
         {"POST /images", store(""), 200, refused(2, "Images", "*not Store without namespace.")},
         {"GET /images", "", 200, "[]"},
     }},
};

class Shoppers : public ::testing::TestWithParam<Scenario> {};

TEST_P(Shoppers, Scenario) {
    Server server(testFormat(), {});
    play(server, GetParam().exchanges);
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Shoppers, ::testing::ValuesIn(scenarios),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

TEST(SandboxServer, AsksForTheCredentialsItWasGiven) {
    Server server(testFormat(), {.user = "Zoë+1", .password = "=%41 1", .seed = true});
    play(server, {{"POST /orders", "StoreID=57&UserName=Zoë+1&Password==%41 1", 200, "*OrderNumber=\"1004\"*</Store>"},
                  {"POST /orders", "StoreID=57&UserName=Zoë 1&Password==A 1", 200, wrongLogin},
                  {"POST /orders", login, 200, wrongLogin}});
}

TEST(SandboxImage, TypeFollowsTheFirstBytes) {
    const std::pair<std::string, std::string> cases[] = {
        {"\x89PNG\r\n\x1A\nrest", "image/png"}, {"\xFF\xD8\xFF\xE0", "image/jpeg"},
        {"RIFF\1\2\3\4WEBPVP8 ", "image/webp"}, {"RIFF\1\2\3\4WAVE", "application/octet-stream"},
        {"RIFF", "application/octet-stream"},   {"BM\1\2", "image/bmp"},
        {"<svg/>", "application/octet-stream"}, {"", "application/octet-stream"},
    };
    for (const auto& [bytes, type] : cases) EXPECT_EQ(imageType(bytes), type) << bytes;
}

}  // namespace
}  // namespace quill1xml::sandbox
