#include "../app/main.h"
