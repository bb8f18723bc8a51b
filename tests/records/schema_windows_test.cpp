// The reduced dialect is known to the Windows parser alone.
#include "records/schema_checks.hpp"

namespace quill1xml {
namespace {

TEST(ReducedStoreSchema, TellsGoodDocumentsFromBad) { testing::expectJudgement(SchemaDialect::xdr); }

}  // namespace
}  // namespace quill1xml
