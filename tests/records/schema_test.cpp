#include "records/schema_checks.hpp"

namespace quill1xml {
namespace {

TEST(StoreSchema, TellsGoodDocumentsFromBad) { testing::expectJudgement(SchemaDialect::xsd); }

}  // namespace
}  // namespace quill1xml
