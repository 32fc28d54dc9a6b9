// Placeholder: written with the line file work.
#pragma once
