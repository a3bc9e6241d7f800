// What libc++ expects of a C library with extended locales, and musl lacks.
#pragma once

#include <locale.h>
#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <wchar.h>

typedef unsigned int __uint32_t;

#ifdef __cplusplus
extern "C" {
#endif
long long strtoll_l(const char* text, char** end, int base, locale_t locale);
unsigned long long strtoull_l(const char* text, char** end, int base, locale_t locale);
int snprintf_l(char* buffer, size_t size, locale_t locale, const char* format, ...);
int asprintf_l(char** buffer, locale_t locale, const char* format, ...);
int sscanf_l(const char* text, locale_t locale, const char* format, ...);
size_t mbrtowc_l(wchar_t* c, const char* s, size_t n, mbstate_t* state, locale_t locale);
size_t wcrtomb_l(char* s, wchar_t c, mbstate_t* state, locale_t locale);
size_t wcsnrtombs_l(char* d, const wchar_t** s, size_t n, size_t m, mbstate_t* state, locale_t l);
size_t mbsnrtowcs_l(wchar_t* d, const char** s, size_t n, size_t m, mbstate_t* state, locale_t l);
size_t mbsrtowcs_l(wchar_t* d, const char** s, size_t n, mbstate_t* state, locale_t locale);
size_t mbrlen_l(const char* s, size_t n, mbstate_t* state, locale_t locale);
int mbtowc_l(wchar_t* c, const char* s, size_t n, locale_t locale);
wint_t btowc_l(int c, locale_t locale);
int wctob_l(wint_t c, locale_t locale);
struct lconv* localeconv_l(locale_t locale);
#ifdef __cplusplus
}
#endif

#define _CTYPE_A 0x00000100L
#define _CTYPE_C 0x00000200L
#define _CTYPE_D 0x00000400L
#define _CTYPE_L 0x00001000L
#define _CTYPE_P 0x00002000L
#define _CTYPE_S 0x00004000L
#define _CTYPE_U 0x00008000L
#define _CTYPE_X 0x00010000L
#define _CTYPE_B 0x00020000L
#define _CTYPE_R 0x00040000L
