# The articles in their packings, from articles.tsv: products, images, categories and prices by quantity.
# Variables: folder, where the pictures stand.

BEGIN { FS = "\t"; split("125 250 500 1000", grams, " ") }

function product(sku, packing, price, weight) {
    count++
    start("AddProduct"); text("strSKU", sku); text("strProductTypeID", $2); text("strDescription", $9 ", " packing)
    number("lngRanking", count); number("intBlnShowProduct", 1); text("strShippingPeriod", "2–3 Tage")
    text("strFullDescription", "<p>" $9 "</p>Herkunft: " $8); text("strProductGroupID", $3); text("strTaxCode", $5)
    number("dblWeight", weight); text("dtmCreated", "2024-03-01"); number("intBlnDeliveryRequired", 1)
    text("strLngQuantityOnHand", 400 - 3 * count)
    money("dblAverageCost", price * 0.55); number("blnAllowCustomerDiscount", count % 9 ? "true" : "false")
    money("dblPrice1", price); money("dblPrice2", price * 0.95); money("dblPrice3", price * 0.9)
    text("strAttribute1Description", packing); text("strAttribute2Description", $8)
    text("strUnitOfMeasure", weight == 0 ? "Stück" : "kg"); text("strBarCode", sprintf("4055500%05d", count))
    text("strThumbNail", picture()); text("strThumbNailFile", folder "/" picture())
    finish()

    start("AddProductAdditional"); number("dblQtyOnPO", count % 4 * 25); money("dblPriceIncl1", price * tax())
    number("TavSMtrxCol", $3 == "BEANS" ? 1 : 2); finish()
    if ($3 == "LEAF") {
        start("AddProductAttribute"); number("lngProductAttributeNumber", 1); text("strDescription", "3 Minuten bei 95 °C")
        finish()
        start("AddProductAttribute"); number("lngProductAttributeNumber", 2)
        text("strDescription", "12 g auf 1 l Wasser"); text("strMultiMediaFileName", "cup.gif")
        text("strMultiMediaFile", folder "/cup.gif"); finish()
    }
    if (count % 5 == 0) {
        start("AddProductPromotion"); text("dtmStart", "2024-06-01"); text("dtmEnd", "2024-06-14T23:59:59")
        money("dblPrice", price * 0.8); finish()
    }
    start("LockProduct"); finish()

    start("AddProductCategoryLink"); text("strSKU", sku); number("lngProductCategoryID", $4)
    if (count % 10 == 0) text("strFlashType", "New")
    number("lngRanking", count); finish()
    start("AddProductImage"); text("strProdCode", sku); text("strFileName", tolower($1) ".jpg"); number("intRank", 1)
    number("blnDeleted", 0); finish()
    start("AddProductDiscountPrice"); text("strSKU", sku); money("dblPrice1", price); money("dblPrice2", price * 0.97)
    number("lngQuantity1", 1); number("lngQuantity2", 10); finish()
}

function picture() { return $2 == "COFFEE" ? "coffee.gif" : $2 == "TEA" ? "tea.gif" : "cup.gif" }
function tax() { return $5 == "MWST7" ? 1.07 : 1.19 }

$7 == "kg" { for (i = 1; i <= 4; i++) product($1 "-" grams[i], grams[i] " g", $6 * grams[i] / 1000, grams[i] / 1000) }
$7 == "each" { product($1, "1 Stück", $6, 0) }
