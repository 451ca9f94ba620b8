#pragma once

#include "message_catalogue.h"
#include "result.h"

#include <string>
#include <string_view>
#include <vector>

namespace qor {

// `pattern` with "%1" ... "%9" replaced by the arguments (a missing argument
// leaves its place empty, "%%" gives "%").
std::string FillIn(std::string_view pattern, const std::vector<std::string> &args);

// An error in the catalogue's language: the text of its key with its
// arguments filled in; its English sentence when it has no key or the
// catalogue lacks the key (an older catalogue).
std::string ErrorText(const MessageCatalogue &catalogue, const Error &error);

// The catalogue's text of a message key (section "MSG") with the arguments
// filled in.
std::string MessageText(const MessageCatalogue &catalogue, std::string_view key,
                        const std::vector<std::string> &args);

} // namespace qor
