// Where this machine keeps the pictures of descriptions: the client SDK puts them
// there, and the HTML engine shows them from there.
#pragma once

#include <string>

// A path in UTF-8, in the user's folder for what can be made again. The folder need not
// exist.
std::string PictureCacheFolder();
