#pragma once

#include "platform/control.h"
#include "platform/input_controls.h"
#include "platform/output_controls.h"
