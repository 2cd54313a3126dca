#include "a/a.h"
