// The sample project that the studio opens for people who want to try it out.
#pragma once

#include <QString>

struct TSampleProject {
    // A copy of the sample's source files that may be edited.
    QString SourceFolder;
    // How to log on, for the status bar.
    QString LogonHint;
};

// Makes the sample database and the source folder in dataFolder unless they are there
// from an earlier start. Raises Exception when that fails; no half-made database is
// left behind.
TSampleProject PrepareSampleProject(const QString& dataFolder);
