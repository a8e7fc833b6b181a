/* The header is one of C: this file only has to compile. */
#include "bass.h"
