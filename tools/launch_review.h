#ifndef TOOLS_LAUNCH_REVIEW_H
#define TOOLS_LAUNCH_REVIEW_H

// Adds to the findings why the launch of launch.h fails, if it does: what is wrong with the home,
// the target, the log or the arguments.
void review_launch();

#endif
