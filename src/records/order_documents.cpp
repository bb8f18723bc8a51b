// Order documents and stages: files that belong to orders and transactions, stages of orders, and their links.

#include "records/record.hpp"

namespace quill1xml::records {

// Oddity: the blank in ` FileLinkID =` and ` OrderNumber =` of the links.
// clang-format off

const Record AddOrderDocument = record<arguments::AddOrderDocument>(u"OrderDocument", [] { return rows(
    key      ("FileLinkID",   "dblFileLinkID",   above(0),                  numberText,
              u"The FileLinkID may not be less than 1."),
    attribute("FileTitle",    "strFileTitle",    notDefault && atMost(100), escaped),
    attribute("FileDateTime", "strFileDateTime", notDefault && atMost(100), escaped),
    attribute("FileName",     "strFileName",     notDefault && atMost(50),  escaped),
    attribute("FileLocation", "strFileLocation", notDefault && atMost(255), escaped),
    attribute("QCPerson",     "strQCPerson",     notDefault && atMost(100), escaped),
    deleted); });

const Record AddOrderStages = record<arguments::AddOrderStages>(u"OrderStages", [] { return rows(
    key      ("FieldLinkID",      "dblFieldLinkID",      above(0),                  numberText,
              u"The FieldLinkID may not be less than 1."),
    attribute("FieldDescription", "strFieldDescription", notDefault && atMost(100), escaped),
    deleted); });

const Record AddOrderDocumentLink = record<arguments::AddOrderDocumentLink>(u"OrderDocumentLink", [] { return rows(
    key      ("OrderNumber", "dblOrderNumber", above(0),      numberText,
              u"The Order Number may not be 0."),
    blankBeforeEquals(
    attribute("FileLinkID",  "dblFileLinkID",  otherThan(-1), numberText)),
    deleted); });

// Oddity: the message speaks of the order number, and the counter is shared with the other link.
const Record AddTransactionDocumentLink = record<arguments::AddTransactionDocumentLink>(
    u"TransactionDocumentLink", [] { return rows(
    key      ("DocumentNumber", "strDocNum",     notEmpty,      apostrophesDoubled,
              u"The Order Number may not be 0."),
    blankBeforeEquals(
    attribute("FileLinkID",     "dblFileLinkID", otherThan(-1), numberText)),
    deleted); },
    {.counter = u"OrderDocumentLink"});

const Record AddOrderStageLink = record<arguments::AddOrderStageLink>(u"OrderStageLink", [] { return rows(
    key      ("FieldLinkID", "dblFieldLinkID", above(0), numberText,
              u"The FieldLinkID may not be 0."),
    blankBeforeEquals(
    key      ("OrderNumber", "dblOrderNumber", above(0), numberText,
              u"The OrderNumber may not be 0.")),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
