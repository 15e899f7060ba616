#pragma once
#include "common/rules_pch.h"
#include <QtWidgets>
