#pragma once
// The data object a host fills and hands to the control: its interfaces and
// the one-call ways to make one from values or load one from a file.
#include "com/ComPtr.h"
#include "dataobject/GraphDataFactory.h"
#include "dataobject/IGraphData.h"
#include "dataobject/IGraphDataAccess.h"
#include "dataobject/IGraphDataEvents.h"
