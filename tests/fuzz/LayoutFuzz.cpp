#include "presentation/RowsColumnsFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Any bytes as a layout file: a damaged one leaves the arrangement as it was, and every field stands in one place.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessaro;
    RowsColumns before;
    before.Place(PivotField::Source, Placement::Column);
    RowsColumns read = before;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (ReadLayout(bytes, read) == LayoutRead::Damaged && !(read == before)) std::abort();
    if (read.Rows().size() + read.Columns().size() + read.Available().size() != kPivotFieldCount) std::abort();
    RowsColumns again;
    if (ReadLayout(LayoutBytes(read, WizardKind::Graph), again) == LayoutRead::Damaged || !(again == read))
        std::abort();
    return 0;
}
