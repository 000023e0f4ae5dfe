#include "app/main.h"
