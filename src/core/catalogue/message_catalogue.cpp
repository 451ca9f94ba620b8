// Being written.
#include "message_catalogue.h"
namespace qor {
Status MessageCatalogue::Load(const std::string &) { return Success(); }
Status MessageCatalogue::LoadFromBytes(std::string_view, const std::string &) { return Success(); }
std::string MessageCatalogue::GetText(std::string_view, std::string_view) const { return {}; }
bool MessageCatalogue::empty() const { return true; }
int SectionNumber(std::string_view) { return 0; }
} // namespace qor
