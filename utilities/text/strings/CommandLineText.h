#ifndef VTRUTILS_TEXT_STRINGS_COMMANDLINETEXT_H
#define VTRUTILS_TEXT_STRINGS_COMMANDLINETEXT_H

namespace vtr {

/// What `GetCommandLineParameter` gives for this command line. Private to the library. Immutable
/// and safe.
void ParameterOfCommandLine(const wchar_t* commandLine, int index, char* buffer, int size);

} // namespace vtr

#endif
