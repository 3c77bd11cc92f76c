#include "libloopwise.h"
