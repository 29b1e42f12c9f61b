#ifndef PLATFORM_WINDOWS_WIDE_TEXT_H
#define PLATFORM_WINDOWS_WIDE_TEXT_H

// The texts of the product are narrow, in the active code page, which the manifest makes UTF-8
// where Windows knows how; some services do right by long texts and every script in their wide form
// only.

// Heap texts of the caller's; null when memory is out, with the last error set. What cannot be
// converted becomes the code page's sign for that. `length` counts characters of `text`.
wchar_t *wide_text(const char *text);
char *narrow_text(const wchar_t *text, int length);

#endif
