#include "seed.hpp"

namespace quill1xml::sandbox {

std::string_view sampleDocument() {
    return R"xml(<Store xmlns="WebStore" StoreID="1">

<DebtorStaff EMailAddress="amelie.durand@example.com" DebtorID="D001" Password="crème brûlée" Name="Amélie Durand-Lefèvre"
  AddressLine1="12, rue de l'Église" AddressLine2="Bâtiment C" City="Besançon" PostalCode="25000" StateProvince="Doubs"
  CountryCode="FRA" ContactNumber="+33 3 81 00 00 01" ShippingContact="Amélie Durand-Lefèvre"
  ShippingAddressLine1="12, rue de l'Église" ShippingCity="Besançon" ShippingPostalCode="25000" ShippingCountryCode="FRA"
  LastOrderDateTime="2024-01-31T14:25:00" SendOrderProgressEmail="1" PasswordHint="Un dessert" CanSeeBalances="1"
  TaxReference="FR 00 123456789"/>
<DebtorStaff EMailAddress="olena.shevchenko@example.com" DebtorID="D002" Password="соняшник" Name="Олена Шевченко"
  AddressLine1="вул. Хрещатик, 22" City="Київ" PostalCode="01001" CountryCode="UKR" ContactNumber="+380 44 000 00 02"
  ShippingContact="Олена Шевченко" ShippingAddressLine1="вул. Хрещатик, 22" ShippingCity="Київ"
  ShippingPostalCode="01001" ShippingCountryCode="UKR" LastOrderDateTime="2024-02-29T08:00:30" SendOrderProgressEmail="0"/>
<DebtorStaff EMailAddress="giorgos@example.com" DebtorID="D003" Password="κωδικός" Name="Γιώργος Παπαδόπουλος"
  AddressLine1="Αριστοτέλους 5" City="Θεσσαλονίκη" PostalCode="546 24" CountryCode="GRC"
  ContactNumber="+30 231 000 0003" ContactNumber2="+30 690 000 0003" IDNumber="ΑΒ 123456" CanSeeBalances="0"/>
<DebtorStaff EMailAddress="misaki.tanaka@example.com" DebtorID="D004" Password="桜" Name="田中 美咲" AddressLine1="千代田1-1"
  City="千代田区" StateProvince="東京都" PostalCode="100-0001" CountryCode="JPN" ContactNumber="+81 3 0000 0004"
  LeisureLinkNumber="4711"/>
<DebtorStaff EMailAddress="conor@example.com" DebtorID="D005" Password="p&amp;w=&lt;1&gt;" Name="Conor O'Brien"
  AddressLine1="&quot;The Nib &amp; Ink&quot;" AddressLine2="7 O'Connell St" AddressLine3="Unit 3" AddressLine4="Rear entrance"
  City="Dún Laoghaire" CountryCode="IRL" ContactNumber="+353 1 000 0005"
  ShippingContact="O'Brien &amp; Sons" ShippingAddressLine1="Unit 3 &lt;rear&gt;" ShippingCity="Dún Laoghaire"
  ShippingCountryCode="IRL" ShippingContactNumber="+353 1 000 0006" ShippingContactNumber2="+353 1 000 0007"/>
<DebtorStaff EMailAddress="bloom@example.com" DebtorID="D006" Password="" Name="🌸 Blüten &amp; Söhne" City="Straße 9, Köln"
  CountryCode="DEU"/>

<Order OrderNumber="1001" OrderDate="2024-01-31T14:25:00" EMailAddress="amelie.durand@example.com" DebtorID="D001"
  CustomerCompanyName="Papeterie Durand &amp; Cie" ShippingContactName="Amélie Durand-Lefèvre"
  ShippingContactNumber="+33 3 81 00 00 01" ShippingAddressLine1="12, rue de l'Église" ShippingAddressLine2="Bâtiment C"
  ShippingCity="Besançon" ShippingPostalCode="25000" ShippingStateProvince="25" ShippingStateProvinceName="Doubs"
  ShippingCountryCode="FRA" CourierCountryCode="FRA" CourierCode="POSTE" CourierServiceCode="48H" DeliveryZone="Métropole"
  ExclusiveShippingCost="5.75" ShippingCost="6.9" ConfirmedDate="2024-01-31T15:00:00" DispatchedDate="2024-02-01T09:30:00"
  PickedDate="2024-02-01T08:45:00" WaybillNumber="6A 0123 4567 8" OrderStatus="Dispatched" PaymentMethodID="CARD"
  PurchaseNumber="BC-2024/007" OnlinePaymentUsed="1" CardType="Carte Bleue" TransactionIndex="TX-5501"
  OrderDiscountPercent="2.5" Message="Merci de livrer l'après-midi.&#10;Sonnez deux fois&#160;!" DisplayCurrencyCode="EUR"
  USDExchangeRate="1.0837" Exported="0" BillingContactName="Comptabilité" BillingAddressLine1="12, rue de l'Église"
  BillingCity="Besançon" BillingPostalCode="25000" BillingCountryCode="FRA">
  <UserDefinedFieldValue FieldName="Emballage cadeau" OrderNumber="1001" FieldValue="Oui, papier &quot;Fête&quot;"/>
  <UserDefinedFieldValue FieldName="Carte" OrderNumber="1001" FieldValue="Joyeux anniversaire 🎂"/>
  <OrderLineItem LineNumber="1" SKU="PEN-015" Quantity="2" ActualQuantity="2" Price="48.5" PriceBeforeDebtorDiscount="52"
    HandlingCost="0" TaxAmount="16.17" DiscountPercent="6.73" TaxCode="TVA" Description="Stylo-plume « Été »" UnitOfMeasure="pc"/>
  <OrderLineItem LineNumber="2" SKU="INK/BLUE" Quantity="10" ActualQuantity="8" Price="7.25" TaxAmount="12.08"
    TaxCode="TVA" TaxCode2="ECO" Description="Encre bleu nuit, 50 ml" UnitOfMeasure="fl" LineShippingAmount="0.5"
    CustomerFreeShipping="0"/>
</Order>
<Order OrderNumber="1002" OrderDate="2024-02-29T08:00:30" EMailAddress="olena.shevchenko@example.com" DebtorID="D002"
  ShippingContactName="Олена Шевченко" ShippingAddressLine1="вул. Хрещатик, 22" ShippingCity="Київ"
  ShippingPostalCode="01001" ShippingCountryCode="UKR" ShippingCost="0" OrderStatus="Confirmed" OnlinePaymentUsed="0"
  ConfirmedDate="2024-02-29T08:05:00" RequiredDeliveryDate="2024-03-08T00:00:00" DisplayCurrencyCode="UAH"
  Message="Подарунок до 8 березня" BudgetPeriod="3" Exported="0">
  <OrderLineItem LineNumber="1" SKU="BOOK-Ж1" Quantity="1" Price="349.9" TaxCode="ПДВ"
    Description="Записник «Їжак», у клітинку" CustomerFreeShipping="1"/>
</Order>
<Order OrderNumber="1003" OrderDate="2024-03-10T23:59:59" EMailAddress="misaki.tanaka@example.com" DebtorID="D004"
  ShippingContactName="田中 美咲" ShippingAddressLine1="千代田1-1" ShippingCity="千代田区" ShippingStateProvince="東京都"
  ShippingPostalCode="100-0001" ShippingCountryCode="JPN" CollectionPointID="TYO-3" CollectionPoint="東京駅 3番口"
  CollectionAddressLine1="丸の内1丁目" CollectionCity="千代田区" CollectionPostalCode="100-0005" OrderStatus="Ordered"
  CancelledDate="2024-03-11T10:00:00" ShippingInsuranceCost="120" DisplayCurrencyCode="JPY" Exported="1">
  <OrderLineItem LineNumber="1" SKU="筆-01" Quantity="3" Price="1200" Description="筆（中字）"/>
  <OrderLineItem LineNumber="2" SKU="紙-A4" Quantity="5" Price="880.5" Description="和紙 &amp; 封筒セット"/>
</Order>
<Order OrderNumber="1004" OrderDate="2024-03-12T12:00:00" EMailAddress="conor@example.com" DebtorID="D005"
  CustomerCompanyName="O'Brien &amp; Sons" ShippingContactName="Conor O'Brien" ShippingAddressLine1="Unit 3 &lt;rear&gt;"
  ShippingCity="Dún Laoghaire" ShippingCountryCode="IRL" OrderStatus="Ordered" PurchaseNumber="&quot;PO&quot; 12 &amp; 13"
  OrderDiscountPercent="0" Exported="0"/>

<Quote QuoteNumber="501" QuoteDate="2024-02-14T09:15:00" EMailAddress="giorgos@example.com" DebtorID="D003"
  ContactName="Γιώργος Παπαδόπουλος" ContactNumber="+30 231 000 0003" AddressLine1="Αριστοτέλους 5" City="Θεσσαλονίκη"
  PostalCode="546 24" CountryCode="GRC" AdditionalInfo="Παράδοση στο λιμάνι &amp; ασφάλιση" NearestPort="Θεσσαλονίκη"
  NearestAirport="SKG" QuoteCurrency="EUR" DeliveryMethod="Θαλάσσια" Exported="0">
  <QuoteLineItem SKU="PEN-015" Quantity="500" Description="Στυλό «Καλοκαίρι»"/>
  <QuoteLineItem SKU="INK/BLUE" Quantity="1000" Description="Μελάνι 50 ml"/>
</Quote>
<Quote QuoteNumber="502" QuoteDate="2024-03-01T16:40:00" EMailAddress="bloom@example.com" DebtorID="D006"
  ContactName="🌸 Blüten &amp; Söhne" City="Köln" CountryCode="DEU" QuoteCurrency="EUR" Exported="1">
  <QuoteLineItem SKU="BOOK-Ж1" Quantity="25" Description="Notizbuch &quot;Igel&quot;, kariert"/>
</Quote>

</Store>)xml";
}

}  // namespace quill1xml::sandbox
