// Included by system-independent headers; nothing of it is used here.
#pragma once
