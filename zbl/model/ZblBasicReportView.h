// Placeholder: being written.
#pragma once
