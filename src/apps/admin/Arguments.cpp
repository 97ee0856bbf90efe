#include "apps/admin/Arguments.h"

Arguments::Arguments(const std::vector<std::string>& texts, const std::set<std::string>& valued,
                     const std::set<std::string>& flags, std::size_t words) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto& text = texts[i];
        if (!text.starts_with("--")) {
            FWords.push_back(text);
            continue;
        }
        std::string value;
        if (valued.contains(text)) {
            if (++i == texts.size()) throw UsageError(text + " needs a value");
            value = texts[i];
        } else if (!flags.contains(text))
            throw UsageError("there is no option " + text + " here");
        if (!FOptions.emplace(text, value).second) throw UsageError(text + " stands there twice");
    }
    if (FWords.size() > words) throw UsageError("\"" + FWords[words] + "\" is too much");
    if (FWords.size() < words) throw UsageError("something is missing");
}

std::string Arguments::Value(const std::string& option, const std::string& fallback) const {
    const auto found = FOptions.find(option);
    return found == FOptions.end() ? fallback : found->second;
}

std::string Arguments::Required(const std::string& option) const {
    if (!Has(option)) throw UsageError(option + " is missing");
    return Value(option);
}
