#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::utf8;

/// Empty prices from one level to another.
std::string noPrices(int first, int last) {
    std::string text;
    for (int i = first; i <= last; ++i) text += " Price" + std::to_string(i) + "=\"\"";
    return text;
}

std::string lockedProduct(const arguments::AddProduct& product, const arguments::AddProductAdditional& more = {}) {
    return testing::writtenBy([&](Store& s) {
        s.AddProduct(product);
        s.AddProductAdditional(more);
        s.LockProduct();
    });
}

TEST(Products, AreWrittenWhenLocked) {
    const std::string end = R"( ShowUnitOfMeasure="0" PurchaseOrderDate="1899-12-30T00:00:00")";
    EXPECT_EQ(lockedProduct({.strSKU = u"A1"}), R"(<Product SKU="A1" LinkedGroupNumber="0" AllowCustomerDiscount="1")" +
                                                    noPrices(1, 20) + end + R"( TavSMtrxCol="0"></Product>)");

    arguments::AddProduct full{.strSKU = u"S&1", .strProductTypeID = u"T", .strDescription = u" Gr\u00FCner <Tee> "};
    full.lngRanking = 0;
    full.strThumbNail = u"a.JPEG";
    full.strThumbNailFile = u"T\\a.jpg";
    full.strThumbNailURL = u"http://x/a?b&c";
    full.strLargeImage = u"b.gif";
    full.strLargeImageFile = u"";
    full.strLargeImageURL = u"u";
    full.intBlnShowProduct = 1;
    full.strShippingPeriod = u"3 days";
    full.strFullDescription = u"long";
    full.strProductGroupID = u"G";
    full.strTaxCode = u"1234567890";
    full.dblWeight = 0.123456;
    full.dblVolume = 0;
    full.dtmCreated = Date::of(2007, 3, 5, 14, 7, 9);
    full.blnDeleted = true;
    full.intBlnDeliveryRequired = 0;
    full.strLngQuantityOnHand = u" 12.5 ";
    full.dblAverageCost = 1;
    full.dblLastCost = 2;
    full.dtmData = Date::of(2000, 1, 1);
    full.lngLinkedGroupNumber = -1;
    full.strLinkedGroupType = u"Parent";
    full.blnAllowCustomerDiscount = false;
    full.dblPrice1 = 10;
    full.dblPrice3 = 0;
    full.strAttribute1Description = u"Red";
    full.strAttribute4Description = u"";
    full.intblnChargeTax1 = 1;
    full.intblnChargeTax3 = 0;
    full.dblPrice4 = -0.01;
    full.dblPrice20 = 99.99995;
    full.strdblStoreQuantityOnHand = u"12.5";
    full.dtePurchaseOrderDate = Date::of(2007, 3, 5);
    full.strUnitOfMeasure = u"kg";
    full.intShowUnitOfMeasure = 1;
    full.strBarCode = u"600123";
    arguments::AddProductAdditional more{.dblQtyOnPO = -3};
    more.dblPriceIncl1 = 11.123456;
    more.dblPriceIncl5 = -2;
    more.dblPriceIncl20 = 0;
    more.TavSMtrxCol = 4;
    testing::FakeEnvironment fake;
    fake.files->bytes[u"T\\a.jpg"] = {0xFF, 0xD8, 0xFF, 0xE0};
    Store store(fake.environment());
    store.SetTempFilePath({u"P"});
    store.AddProduct(full);
    store.AddProductAdditional(more);
    store.LockProduct();
    EXPECT_EQ(
        utf8(fake.files->texts.at(u"P\\WebStoreProduct1.tmp")),
        "<Product SKU=\"S&amp;1\" ProductTypeID=\"T\" Description=\"Gr\u00FCner &#60;Tee&#62;\" Ranking=\"0\" "
        "ThumbNail=\"a.JPEG\" ThumbNailFile=\"/9j/4A==\" ThumbNailURL=\"http://x/a?b&amp;c\" LargeImage=\"b.gif\" "
        "LargeImageFile=\"\" LargeImageURL=\"u\" ShowProduct=\"1\" ShippingPeriod=\"3 days\" FullDescription=\"long\" "
        "ProductGroupID=\"G\" TaxCode=\"1234567890\" Weight=\" .1235\" Volume=\" 0\" "
        "DateCreated=\"2007-03-05T14:07:09\" Deleted=\"1\" DeliveryRequired=\"0\" QuantityOnHand=\"12\" "
        "AverageCost=\" 1\" LastCost=\" 2\" DateOfData=\"2000-01-01T00:00:00\" LinkedGroupType=\"Parent\" "
        "AllowCustomerDiscount=\"0\" Price1=\" 10\" Price2=\"\" Price3=\" 0\"" +
            noPrices(4, 19) +
            " Price20=\" 100\" Attribute1Description=\"Red\" Attribute4Description=\"\" ChargeTax1=\"1\" "
            "ChargeTax3=\"0\" StoreQuantityOnHand=\" 12.5\" UnitOfMeasure=\"kg\" ShowUnitOfMeasure=\"1\" "
            "PurchaseOrderDate=\"2007-03-05T00:00:00\" BarCode=\"600123\" QtyOnPO=\"-3\" PriceIncl1=\" 11.123456\" "
            "PriceIncl5=\"-2\" PriceIncl20=\" 0\" TavSMtrxCol=\"4\"></Product>");
}

TEST(Products, TakeWhatWasAddedWhileTheyWereOpenOrBefore) {
    EXPECT_EQ(testing::writtenBy([](Store& s) {
                  s.AddProductAttribute({.lngProductAttributeNumber = 1, .strDescription = u"Colour"});
                  s.AddProduct({.strSKU = u"A"});
                  s.AddProductPromotion({Date::of(2007, 1, 1), Date::of(2007, 1, 1), 9.5, true, true});
                  s.AddProductAdditional();
                  s.AddProductAttribute({2, u"", u"f.mp3", notGiven, u"u", true});
                  s.LockProduct();
                  s.AddProductAdditional();
                  s.LockProduct();
              }),
              "<Product SKU=\"A\" LinkedGroupNumber=\"0\" AllowCustomerDiscount=\"1\"" + noPrices(1, 20) +
                  " ShowUnitOfMeasure=\"0\" PurchaseOrderDate=\"1899-12-30T00:00:00\" TavSMtrxCol=\"0\">"
                  "\r\n<ProductAttribute ProductAttributeNumber=\"1\" Description=\"Colour\"/>"
                  "\r\n<ProductAttribute ProductAttributeNumber=\"2\" Description=\"\" MultiMediaFileName=\"f.mp3\" "
                  "MultiMediaURL=\"u\" Deleted=\"1\"/>"
                  "\r\n<ProductPromotion StartDate=\"2007-01-01T00:00:00\" EndDate=\"2007-01-01T00:00:00\" "
                  "Price=\" 9.5\" Deleted=\"1\"/></Product>"
                  // Finished without a start: a headless product.
                  " TavSMtrxCol=\"0\"></Product>");
}

TEST(Products, LeaveOutWhatDoesNotFit) {
    const std::u16string tooLong = std::u16string(147, u'x') + u".jpg";
    const std::u16string sku(255, u'x');
    for (const Text name : {Text(u"a.png"), Text(u"a.jpg "), Text(tooLong)}) {
        EXPECT_EQ(lockedProduct({.strSKU = sku, .strThumbNail = name}).find("ThumbNail"), std::string::npos);
    }
    const std::string product = lockedProduct({.strSKU = u"A", .strProductTypeID = u"12345678901", .strTaxCode = u""});
    EXPECT_EQ(product.find("ProductTypeID"), std::string::npos);
    EXPECT_EQ(product.find("TaxCode"), std::string::npos);
}

TEST(Products, StayClosedAfterARefusalAndAfterALostWrite) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    store.SetTempFilePath({u"P"});
    EXPECT_THROW(store.AddProduct({u""}), Error);
    store.AddProduct({u"A"});
    fake.files->full = true;
    EXPECT_THROW(store.LockProduct(), Error);
    fake.files->full = false;
    EXPECT_THROW(store.LockProduct(), Error);
    EXPECT_TRUE(fake.files->texts.empty());
}

}  // namespace
}  // namespace quill1xml
