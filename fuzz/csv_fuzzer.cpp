#include "tool_table_csv.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

// Whatever the bytes, the import either refuses them naming a row, or gives
// a table whose export imports again to the same table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const qor::CsvImportOptions options{40, 1252, 16};
    qor::CsvImport imported = qor::ParseToolTableCsv(bytes, options);
    if (!imported.ok()) {
        if (imported.Refusal->Row < 1) {
            std::abort();
        }
        return 0;
    }
    const std::string csv = qor::FormatToolTableCsv(imported.Table, 1252);
    qor::CsvImport again = qor::ParseToolTableCsv(csv, options);
    if (!again.ok() || qor::FormatToolTableCsv(again.Table, 1252) != csv) {
        std::abort();
    }
    return 0;
}
