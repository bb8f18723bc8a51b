# The customers of customers.tsv as debtors: logins, own prices, open items, statements and history.

BEGIN {
    FS = "\t"
    split("SIDAMO-500 NAPOLI-1000 ELLIN-250 IVAN-125 DARJ-250 ROOI-500 CREMA-1000 KAMIL-250", favourites, " ")
}

function debtor() {
    start("AddDebtor"); text("strDebtorID", $1); text("strName", $3); text("strDebtorCategoryID", $2)
    text("strRepCode", $8 == "GR" || $8 == "BG" ? "ELENI" : "ZOE"); text("strContactName", $4)
    text("strContactNumber", sprintf("+49 451 5550%03d", count)); text("strEMailAddress", mail())
    text("strAddressLine1", $5); text("strCity", $6); text("strPostalCode", $7); text("strCountryCode", $8)
    text("strCurrencyCode", $9); text("strPriceList", 1 + count % 3); text("strPaymentMethodID", "RECH")
    text("strTerms", "14 Tage"); number("dblCreditLimit", 500 * count); number("dblDiscountPercent", $10)
    money("dblBalance", invoice - payment); money("dblAgeing1", invoice - payment); number("intBlnOnHold", 0)
    text("dtmDateOfData", "2024-06-01"); finish()
    start("LockDebtor"); finish()

    start("AddDebtorStaff"); text("strEMailAddress", mail()); text("strDebtorID", $1); text("strPassword", "geheim & " $1)
    text("strName", $4); text("strAddressLine1", $5); text("strCity", $6); text("strPostalCode", $7)
    text("strCountryCode", $8); number("intBlnSendOrderProgressEmail", 1); number("intBlnCanSeeBalances", count % 2)
    finish()
}

function mail() { return "einkauf" count "@kunde.example" }

function prices(   i, sku) {
    for (i = 1; i in favourites; i++) {
        sku = favourites[i]
        start("AddDebtorPrice"); text("strDebtorID", $1); text("strSKU", sku); money("dblPrice1", 10 + i + count / 10)
        money("dblPrice2", 9 + i + count / 10); number("lngQuantity1", 1); number("lngQuantity2", 12)
        text("dtmStartDate", "2024-01-01"); text("dtmEndDate", "2024-12-31"); number("intblnEnableDateRange", 1)
        finish()
    }
    sku = favourites[1 + count % 8]
    start("AddDebtorProduct"); text("strDebtorID", $1); text("strSKU", sku); text("strDebtorSKU", $2 "/" count)
    text("strDescription", "Unser \"" sku "\""); text("dtmLastPurchaseDate", day(60 + count))
    number("dblLastPurchasePrice", 12.345); number("dblLastPurchaseQuantity", 2 * count); finish()
}

function openItems() {
    start("AddDebtorOpenItem"); text("strDebtorID", $1); text("strReferenceNumber", number1); text("strTransactionType", "Invoice")
    text("dtmTransactionDate", day(count)); text("dtmDueDate", day(count + 14)); text("strDescription", "Rechnung " number1)
    money("dblAmount", invoice); money("dblOutstandingAmount", invoice - payment); text("strCurrencyCode", $9); finish()
    start("AddOpenItemHeader"); text("strDebtorID", $1); text("strReferenceNumber", number1); text("strItemType", "Rechnung")
    text("strValue1", sprintf("%.2f", invoice - payment)); text("strValue2", day(count + 14)); finish()
    start("AddOpenItemDetail"); text("strDebtorID", $1); text("strReferenceNumber", number1); text("strItemType", "Rechnung")
    number("lngRowNumber", 1); text("strValue1", favourites[1]); text("strValue2", count); finish()
}

function statement() {
    start("AddDebtorStatementHeader"); text("strDebtorID", $1); text("dtmStatementDate", "2024-05-31")
    money("dblOpeningBalance", 0); money("dblClosingBalance", invoice - payment); money("dblAgeing1", invoice - payment)
    text("strCurrencyCode", $9); text("strMessage", "Grüße aus Lübeck – поздрави – χαιρετισμούς"); finish()
    statementLine(1, day(count), number1, "Rechnung", "dblDebit", invoice, invoice)
    statementLine(2, day(count + 20), "Z" number1, "Zahlung, danke!", "dblCredit", payment, invoice - payment)
}

function statementLine(row, date, reference, description, side, amount, balance) {
    start("AddDebtorStatementLines"); text("strDebtorID", $1); text("dtmStatementDate", "2024-05-31")
    number("lngLineNumber", row); text("dtmTransactionDate", date); text("strReferenceNumber", reference)
    text("strDescription", description); money(side, amount); money("dblBalance", balance); finish()
}

function history(   net) {
    net = invoice / 1.07
    transaction(number1, "Invoice", day(count), invoice, invoice - net, invoice - payment)
    transaction("Z" number1, "Payment", day(count + 20), -payment, 0, 0)
    start("AddTransactionHistoryHeader"); text("strDocumentNumber", number1); text("strDebtorID", $1)
    text("dtmDocumentDate", day(count)); text("dtmDueDate", day(count + 14)); number("lngOrderNumber", 1000 + count)
    text("strContactName", $4); text("strAddressLine1", $5); text("strCity", $6); text("strPostalCode", $7)
    text("strCountryCode", $8); money("dblSubTotal", net); money("dblTaxAmount", invoice - net)
    money("dblTotal", invoice); finish()
    start("AddTransactionHistoryLines"); text("strDocumentNumber", number1); number("lngLineNumber", 1)
    text("strSKU", favourites[1]); text("strDescription", "Sidamo, naturbelassen"); number("dblQuantity", count)
    text("strUnitOfMeasure", "kg"); money("dblPrice", net / count); money("dblTaxAmount", invoice - net)
    money("dblLineTotal", net); finish()
    start("AddTransactionHistoryLink"); text("strDebtorID", $1); text("strDocumentNumber", "Z" number1)
    text("strLinkedDocumentNumber", number1); money("dblAmount", payment); finish()
    start("AddTransactionDocumentLink"); text("strDocNum", number1); number("dblFileLinkID", 502); finish()
}

function transaction(document, type, date, amount, taxAmount, outstanding) {
    start("AddTransactionHistory"); text("strDebtorID", $1); text("strDocumentNumber", document)
    text("strTransactionType", type); text("dtmTransactionDate", date); money("dblAmount", amount)
    money("dblTaxAmount", taxAmount); money("dblOutstandingAmount", outstanding); finish()
}

{
    count++
    number1 = "R" (24000 + count)
    invoice = 117.7 + 21.4 * count
    payment = 50 * (count % 3)
    debtor(); prices(); openItems(); statement(); history()
}
