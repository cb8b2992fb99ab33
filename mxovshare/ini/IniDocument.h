// Model of an INI file over its bytes.
#pragma once
