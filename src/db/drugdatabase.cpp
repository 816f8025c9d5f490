#include "drugdatabase.h"
