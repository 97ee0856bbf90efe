// Where this machine keeps the pictures of descriptions, and how a document names their
// files: the client SDK puts them there, and the HTML engine shows them from there. And
// which files of the user's may leave this machine.
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

// Tells that the user has put this file into a description. Holds until the program ends.
void ChoosePicture(const std::string& path);
// Whether the user has. Only such a file may be sent to a server, whatever a document says:
// its text may be a stranger's.
bool IsChosenPicture(const std::string& path);
