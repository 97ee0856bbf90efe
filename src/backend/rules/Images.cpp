#include "backend/rules/Images.h"

#include "backend/rules/Connection.h"
#include "backend/rules/Passwords.h"
#include "backend/rules/Refusal.h"
#include "markup/PictureFormat.h"

namespace Backend {

const std::size_t MaxPictureBytes = Markup::MaxPictureBytes;

std::string KeepImage(Connection& connection, std::string_view bytes) {
    if (bytes.empty() || bytes.size() > MaxPictureBytes)
        throw RuleViolation("An image is empty or larger than " + std::to_string(MaxPictureBytes) +
                            " bytes.");
    const std::string type(Markup::PictureType(bytes));
    if (type.empty())
        throw RuleViolation("An image is no " + std::string(Markup::PictureFormats) +
                            " picture. Save it in one of these formats first.");
    std::string hash = ContentHash(bytes);
    connection.Images.Add(hash, type, bytes);
    return hash;
}

} // namespace Backend
