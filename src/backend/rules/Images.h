// Keeps the images of descriptions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Backend {

struct Connection;

// Of one image.
extern const std::size_t MaxPictureBytes;

// Keeps an image once, however often it comes, and gives the hash by which descriptions
// name it. Its media type is what its bytes say. Refuses (RuleViolation) what is empty,
// too large or in no format of pictures.
std::string KeepImage(Connection& connection, std::string_view bytes);

} // namespace Backend
