#ifndef CORE_STATE_ARRAYS_H
#define CORE_STATE_ARRAYS_H

// The slot counts of the launcher state's arrays, and the one way to append to them.

// Stores `entry` at index *count and raises *count. `array` is one of the counted arrays of the
// launcher state (any other is taken to have ARGUMENT_SLOTS slots). A full array refuses the entry:
// "Error: too many ..." on standard error and in the trace log, exit status 1.
void append_entry(char **array, int *count, char *entry);

// Frees the entries below *count, sets their slots to null and *count to 0.
void release_entries(char **array, int *count);

#endif
