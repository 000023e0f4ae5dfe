#include <app/main.h>
