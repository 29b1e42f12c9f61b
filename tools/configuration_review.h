#ifndef TOOLS_CONFIGURATION_REVIEW_H
#define TOOLS_CONFIGURATION_REVIEW_H

// launcher.cfg as a person reads it: what is passed over, and what is taken otherwise than meant.

// Adds what it finds in the launcher.cfg of the home to the findings. Needs the configuration
// loaded, as far as the core got.
void review_configuration(const char *home);

// How many lines of it are settings; -1: there is no file.
int setting_lines();

#endif
