#pragma once
#include "posix/file_descriptor.h"
