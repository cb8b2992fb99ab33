#include "ini/IniDocument.h"
