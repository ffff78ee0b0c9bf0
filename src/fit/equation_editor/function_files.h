// Where function files (.lfn) lie and how they are named, read and saved.
#pragma once

#include "fit/definition/cur_fit.h"

#include <QCoreApplication>
#include <QString>

namespace lumoplot {

/// The folder for function files: "LFN" beside the running program where that can be written, else "LFN"
/// among the user's application data. It is made when missing.
QString FunctionFolder(const QString& programFolder = QCoreApplication::applicationDirPath());

/// Puts the ready function files into a folder that holds no function file. Throws EFileError for one that
/// can not be saved.
void OfferReadyFunctions(const QString& folder);

/// The name with the extension ".lfn" in the place of another one, or added to a name without. What follows a
/// dot counts as an extension when it is one to four letters and digits that start with a letter.
QString WithFunctionExtension(const QString& fileName);

/// The file to open for a chosen name: the one of this very name, else that whose last part is in lower case
/// and with the extension.
QString FunctionFileToOpen(const QString& chosen);

/// Reads a function file into the fit. Throws EFileError "Wrong File Format!" for a file that holds no curve
/// fit, and as ReadWholeFile for one that can not be read; the fit then stays as it was. An equation that
/// does not compile is no error here.
void LoadFunction(TCurFit& fit, const QString& fileName);

} // namespace lumoplot
