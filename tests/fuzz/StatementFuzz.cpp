// Any bytes as a statement: the front end takes them or refuses them with an Error, and does nothing else.

#include "jet/emit/Translator.h"
#include "jet/values/Error.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

/// Two tables that every statement may name.
class TwoTables final : public jet::Catalogue {
  public:
    TwoTables() {
        first_.name = first_.sourceTable = "A";
        first_.columns = {
            {"Id", jet::ColumnType::Counter}, {"Name", jet::ColumnType::Text}, {"Datavalue", jet::ColumnType::Text}};
        second_.name = second_.sourceTable = "B";
        second_.columns = {
            {"Id", jet::ColumnType::Long}, {"Flag", jet::ColumnType::YesNo}, {"Key", jet::ColumnType::Guid}};
    }
    [[nodiscard]] const jet::TableInfo* find(std::string_view name) const override {
        if (jet::SameName(name, first_.name)) return &first_;
        return jet::SameName(name, second_.name) ? &second_ : nullptr;
    }
    [[nodiscard]] unsigned version() const override { return 1; }

  private:
    jet::TableInfo first_;
    jet::TableInfo second_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TwoTables catalogue;
    try {
        static_cast<void>(jet::Translate({reinterpret_cast<const char*>(data), size}, catalogue));
    } catch (const jet::Error&) {
        // refused, which is as good as taken
    }
    return 0;
}
