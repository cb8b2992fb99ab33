// The commands of the package command line. Each returns the program's exit code.
#pragma once

#include "Arguments.h"

enum ExitCode : int {
    kDone = 0,
    kFailed = 1,
    kUsage = 2,
    kFindings = 3, ///< done, and something was found or left
};

int Create(const Arguments& arguments);
int List(const Arguments& arguments);
int Extract(const Arguments& arguments);
/// Verifies every entry without unpacking it to disk, prints the catalogue, warns about missing documents.
int Check(const Arguments& arguments);
/// Copies linked documents into a new package.
int Bundle(const Arguments& arguments);
/// Points the links below a folder to another one.
int Relink(const Arguments& arguments);
/// Adds, removes and describes documents.
int Add(const Arguments& arguments);
int Remove(const Arguments& arguments);
int Set(const Arguments& arguments);
/// Sets or extracts the preview.
int Thumbnail(const Arguments& arguments);
int ShowHistory(const Arguments& arguments);
/// Compares two packages, or the folders of unpacked ones.
int Diff(const Arguments& arguments);
/// Prints a text of a package for version control.
int Text(const Arguments& arguments);
/// Prints a script that completes commands and options in a shell.
int Completion(const Arguments& arguments);
