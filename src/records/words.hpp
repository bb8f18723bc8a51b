// Enumerations that several records share.
#pragma once

#include <string_view>

namespace quill1xml::records {

inline constexpr std::u16string_view priceLists[] = {u"1",  u"2",  u"3",  u"4",  u"5",  u"6",  u"7",
                                                     u"8",  u"9",  u"10", u"11", u"12", u"13", u"14",
                                                     u"15", u"16", u"17", u"18", u"19", u"20", u"None"};

inline constexpr std::u16string_view orderStatuses[] = {u"Unconfirmed", u"OnHold",    u"Confirmed", u"Picked",
                                                        u"Dispatched",  u"Cancelled", u"Standing",  u"Layaway"};

}  // namespace quill1xml::records
