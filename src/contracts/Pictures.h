// Where this machine keeps the pictures of descriptions, and how a document names their
// files: the client SDK puts them there, and the HTML engine shows them from there.
#pragma once

#include <string>

// A path in UTF-8, in the user's folder for what can be made again. The folder need not
// exist.
std::string PictureCacheFolder();

// A file's path as a document names it: what an address would take for something else is
// escaped.
std::string PictureAddress(const std::string& path);
// The path that such an address names, with or without "file://" in front.
std::string PicturePath(const std::string& address);
