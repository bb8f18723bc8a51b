# The orders, quotations and orders from elsewhere that the customers of customers.tsv placed.

BEGIN {
    FS = "\t"
    split("HUILA-500 CREMA-1000 ELLIN-250 ASSAM-125 IVAN-125 FASKO-250 FILTER KANNE", goods, " ")
    split("Unconfirmed Confirmed Picked Dispatched OnHold", states, " ")
    dates = "Order Confirmed Dispatched Cancelled Picked RequiredDelivery"
    texts = "EMailAddress ShippingContactName ShippingContactNumber ShippingContactNumber2 ShippingAddressLine1 " \
        "ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity ShippingPostalCode " \
        "ShippingStateProvince ShippingStateProvinceName ShippingCountryCode CourierCountryCode CourierCode " \
        "CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID CreditCardNumber " \
        "CreditCardExpiry CreditCardPinNumber CardType TransactionIndex BankReference Hash Message " \
        "DisplayCurrencyCode SessionID CollectionPointID CollectionPoint CollectionAddressLine1 " \
        "CollectionAddressLine2 CollectionAddressLine3 CollectionAddressLine4 CollectionCity CollectionPostalCode " \
        "CollectionStateProvince DebtorID BillingContactName IDNumber ContactNumber ContactNumber2 " \
        "BillingAddressLine1 BillingAddressLine2 BillingAddressLine3 BillingAddressLine4 BillingCity " \
        "BillingPostalCode BillingStateProvince BillingStateProvinceName BillingCountryCode PurchaseNumber " \
        "CustomerCompanyName"
    numbers = "OrderNumber ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate " \
        "ShippingInsuranceCost WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported"
    quoteTexts = "EMail ContactName ContactNumber ContactNumber2 AddressLine1 AddressLine2 AddressLine3 AddressLine4 " \
        "City PostalCode StateProvince CountryCode NearestPort NearestAirport QuoteCurrency DeliveryMethod " \
        "AdditionalInfo DebtorID"
    never = "1899-12-30T00:00:00"
}

function order(id, round,   given) {
    given["OrderNumber"] = id; given["Order"] = day(5 * count + round); given["RequiredDelivery"] = day(5 * count + 9)
    given["EMailAddress"] = "einkauf" count "@kunde.example"
    given["ShippingContactName"] = $4; given["ShippingAddressLine1"] = $5; given["ShippingCity"] = $6
    given["ShippingPostalCode"] = $7; given["ShippingCountryCode"] = $8; given["CourierCountryCode"] = "DE"
    given["CourierCode"] = $8 == "DE" ? "POST" : "FRACHT"; given["CourierServiceCode"] = $8 == "DE" ? "STD" : "ECO"
    given["OrderStatus"] = states[round]; given["PaymentMethodID"] = round % 2 ? "RECH" : "CARD"
    given["DisplayCurrencyCode"] = $9; given["Message"] = round == 3 ? "Please don't ring – \"baby asleep\" & спасибо" : "StringDefault"
    given["DebtorID"] = $1; given["BillingContactName"] = $4; given["BillingAddressLine1"] = $5; given["BillingCity"] = $6
    given["BillingPostalCode"] = $7; given["BillingCountryCode"] = $8; given["CustomerCompanyName"] = $3
    given["PurchaseNumber"] = $2 "-" id; given["ShippingCost"] = 4.9; given["OrderDiscountPercent"] = $10
    given["BlnOnlinePaymentUsed"] = round % 2 ? 0 : 1
    list = "<Order"
    attributes(dates, never, given); attributes(texts, "StringDefault", given); attributes(numbers, -1, given)
    start("AddOrder"); text("strXMLParameterList", list "/>"); finish()

    start("AddOrderUDFValue"); number("lngOrderNumber", id); text("strFieldName", "Mahlgrad")
    text("strFieldValue", round % 2 ? "fein" : "ganze Bohne"); finish()
    orderLine(1, goods[1 + (count + round) % 8], round, 7.1)
    orderLine(2, goods[1 + (count + 3 * round + 1) % 8], 2 * round, 5.675)
    start("LockOrder"); finish()
    start("AddOrderStageLink"); number("dblFieldLinkID", 1 + round % 2); number("dblOrderNumber", id); finish()
}

function orderLine(row, sku, quantity, price) {
    start("AddOrderLineItem"); number("lngLineNumber", row); text("strSKU", sku); number("lngQuantity", quantity)
    number("lngActualQuantity", quantity); number("dblPrice", price); money("dblTaxAmount", price * quantity * 0.07)
    number("dblDiscountPercent", $10); text("strTaxCode", "MWST7"); text("strDescription", sku " für " $3); finish()
}

function quotation(id,   given) {
    given["QuoteNumber"] = id; given["QuoteDate"] = day(count); given["EMail"] = "einkauf" count "@kunde.example"
    given["ContactName"] = $4; given["AddressLine1"] = $5; given["City"] = $6; given["PostalCode"] = $7
    given["CountryCode"] = $8; given["QuoteCurrency"] = $9; given["DeliveryMethod"] = "By sea & road"
    given["AdditionalInfo"] = "Könnten Sie \"Σωκράτης\" auch in Säcken liefern?"; given["DebtorID"] = $1
    list = "<Quote"
    attributes("QuoteDate", never, given); attributes(quoteTexts, "StringDefault", given)
    attributes("QuoteNumber BlnExported", -1, given)
    start("AddQuotation"); text("strXMLParameterList", list "/>"); finish()
    start("AddQuoteLineItem"); text("strSKU", "ELLIN-1000"); number("lngQuantity", 60 + count)
    text("strDescription", "Ελληνικός καφές, 60-kg-Sack"); finish()
    start("AddQuoteLineItem"); text("strSKU", "SAMO"); number("lngQuantity", 1); finish()
    start("LockQuote"); finish()
}

function externalOrder(id) {
    start("AddExternalOrder"); text("strOrderNumber", id); text("dtmOrder", day(count)); text("strDebtorID", $1)
    text("strEmailAddress", "einkauf" count "@kunde.example"); text("strDeliveryContactName", $4)
    text("strDeliveryAddressLine1", $5); text("strDeliveryCity", $6); text("strDeliveryPostalCode", $7)
    text("strDeliveryCountryCode", $8); text("strShippingMethod", "Abholung"); money("dblShippingCost", 0)
    number("dblTax", 3.2); text("strOrderStatus", "Confirmed"); finish()
    start("AddExternalOrderLineItem"); number("lngLineNumber", 1); text("strSKU", goods[1 + count % 8])
    text("strDescription", "Am Telefon bestellt"); number("dblQty", 2.5); number("dblPrice", 18.3); number("dblTax", 3.2)
    finish()
    start("LockExternalOrder"); finish()
}

{
    count++
    for (round = 1; round <= 5; round++) order(1000 + 12 * (round - 1) + count, round)
    quotation(300 + count)
    externalOrder("T" (700 + count))
    start("AddOrderDocumentLink"); number("dblOrderNumber", 1000 + count); number("dblFileLinkID", 501); finish()
    if (count % 4 == 0) {
        start("UpdateOrder"); number("lngOrderNumber", 1000 + count); text("strOrderStatus", "Dispatched")
        text("strWaybillNumber", "LBC " (550000 + count)); finish()
    }
}
