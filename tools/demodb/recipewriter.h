#pragma once

class TableWriter;

// The compounding recipes: categories, recipe drugs (some with a Latin
// synonym), recipes and their ingredients.
class RecipeWriter {
public:
    static void write(TableWriter& writer);
};
