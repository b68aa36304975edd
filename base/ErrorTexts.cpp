// SPDX-License-Identifier: Apache-2.0
// ErrorTexts: the catalogue of numbered errors, engine and run time, with the text each is known
// by.
#include "base/NumberedError.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace base {

namespace {

// A `|` or `|1`, `|2`, `|3` in a text is a mark: what the failing call was about goes there.
struct CatalogueEntry {
    int number;
    std::string_view text;
};

// By number. The engine's texts end with a full stop and put two blanks between sentences; those
// of the run time do neither.
constexpr auto kCatalogue = std::to_array<CatalogueEntry>({
    {3, "Return without GoSub"},
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {11, "Division by zero"},
    {13, "Type mismatch"},
    {20, "Resume without error"},
    {28, "Out of stack space"},
    {48, "Error in loading DLL"},
    {51, "Internal error"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {54, "Bad file mode"},
    {55, "File already open"},
    {57, "Device I/O error"},
    {58, "File already exists"},
    {59, "Bad record length"},
    {61, "Disk full"},
    {62, "Input past end of file"},
    {63, "Bad record number"},
    {67, "Too many files"},
    {68, "Device unavailable"},
    {70, "Permission denied"},
    {71, "Disk not ready"},
    {74, "Can't rename with different drive"},
    {75, "Path/File access error"},
    {76, "Path not found"},
    {91, "Object variable or With block variable not set"},
    {92, "For loop not initialized"},
    {93, "Invalid pattern string"},
    {94, "Invalid use of Null"},
    {321, "Invalid file format"},
    {340, "Control array element '|' doesn't exist"},
    {341, "Invalid control array index"},
    {360, "Object already loaded"},
    {361, "Can't load or unload this object"},
    {364, "Object was unloaded"},
    {365, "Unable to unload within this context"},
    {380, "Invalid property value"},
    {381, "Invalid property array index"},
    {382, "'|' property cannot be set at run time"},
    {383, "Set not supported (read-only property)"},
    {384, "A form can't be moved or sized while minimized or maximized"},
    {385, "Must specify index when using property array"},
    {400, "Form already displayed; can't show modally"},
    {401, "Can't show non-modal form when modal form is displayed"},
    {402, "Must close or hide topmost modal form first"},
    {419, "Permission to use object denied"},
    {422, "Property not found"},
    {423, "Property or method not found"},
    {424, "Object required"},
    {425, "Invalid object use"},
    {429, "ActiveX component can't create object"},
    {430, "Class does not support Automation or does not support expected interface"},
    {438, "Object doesn't support this property or method"},
    {440, "Automation error"},
    {445, "Object doesn't support this action"},
    {448, "Named argument not found"},
    {449, "Argument not optional"},
    {450, "Wrong number of arguments or invalid property assignment"},
    {457, "This key is already associated with an element of this collection"},
    {460, "Invalid Clipboard format"},
    {481, "Invalid picture"},
    {482, "Printer error"},
    {483, "Printer driver does not support specified property"},
    {484, "Problem getting printer information from the system"},
    {520, "Can't empty Clipboard"},
    {521, "Can't open Clipboard"},
    {3000, "Reserved error (|); there is no message for this error."},
    {3001, "Invalid argument."},
    {3005, "'|' is not a valid database name."},
    {3006, "Database '|' is exclusively locked."},
    {3008, "The table '|' is already opened exclusively by another user, or it is already open "
           "through the user interface and cannot be manipulated programmatically."},
    {3009, "You tried to lock table '|' while opening it, but the table cannot be locked because "
           "it is currently in use.  Wait a moment, and then try the operation again."},
    {3010, "Table '|' already exists."},
    {3011, "The Microsoft Jet database engine could not find the object '|'.  Make sure the object "
           "exists and that you spell its name and the path name correctly."},
    {3012, "Object '|' already exists."},
    {3015, "Index not found."},
    {3016, "Field will not fit in record."},
    {3017, "The size of a field is too long."},
    {3018, "Could not find field."},
    {3019, "Operation invalid without a current index."},
    {3020, "Update or CancelUpdate without AddNew or Edit."},
    {3021, "No current record."},
    {3022, "The changes you requested to the table were not successful because they would create "
           "duplicate values in the index, primary key, or relationship.  Change the data in the "
           "field or fields that contain duplicate data, remove the index, or redefine the index "
           "to permit duplicate entries and try again."},
    {3023, "AddNew or Edit already used."},
    {3024, "Could not find file '|'."},
    {3025, "Cannot open any more files."},
    {3026, "Not enough space on disk."},
    {3027, "Cannot update.  Database or object is read-only."},
    {3028, "Cannot start your application.  The workgroup information file is missing or opened "
           "exclusively by another user."},
    {3029, "Not a valid account name or password."},
    {3031, "Not a valid password."},
    {3032, "Cannot perform this operation."},
    {3033, "You do not have the necessary permissions to use the '|' object.  Have your system "
           "administrator or the person who created this object establish the appropriate "
           "permissions for you."},
    {3034, "You tried to commit or rollback a transaction without first beginning a transaction."},
    {3035, "System resource exceeded."},
    {3036, "Database has reached maximum size."},
    {3037, "Cannot open any more tables or queries."},
    {3040, "Disk I/O error during read."},
    {3041, "Cannot open a database created with a previous version of your application."},
    {3043, "Disk or network error."},
    {3044, "'|' is not a valid path.  Make sure that the path name is spelled correctly and that "
           "you are connected to the server on which the file resides."},
    {3045, "Could not use '|'; file already in use."},
    {3046, "Could not save; currently locked by another user."},
    {3047, "Record is too large."},
    {3048, "Cannot open any more databases."},
    {3049, "Cannot open database '|'.  It may not be a database that your application recognizes, "
           "or the file may be corrupt."},
    {3050, "Could not lock file."},
    {3051, "The Microsoft Jet database engine cannot open the file '|'.  It is already opened "
           "exclusively by another user, or you need permission to view its data."},
    {3052, "File sharing lock count exceeded.  Increase MaxLocksPerFile registry entry."},
    {3055, "Not a valid file name."},
    {3056, "Could not repair this database."},
    {3058, "Index or primary key cannot contain a Null value."},
    {3061, "Too few parameters. Expected |."},
    {3062, "Duplicate output alias '|'."},
    {3063, "Duplicate output destination '|'."},
    {3064, "Cannot open action query '|'."},
    {3065, "Cannot execute a select query."},
    {3066, "Query must have at least one destination field."},
    {3067, "Query input must contain at least one table or query."},
    {3070, "The Microsoft Jet database engine does not recognize '|' as a valid field name or "
           "expression."},
    {3071, "This expression is typed incorrectly, or it is too complex to be evaluated.  For "
           "example, a numeric expression may contain too many complicated elements.  Try "
           "simplifying the expression by assigning parts of the expression to variables."},
    {3073, "Operation must use an updatable query."},
    {3074, "Cannot repeat table name '|' in FROM clause."},
    {3075, "|1 in query expression '|2'."},
    {3076, "| in criteria expression."},
    {3077, "| in expression."},
    {3078, "The Microsoft Jet database engine cannot find the input table or query '|'.  Make sure "
           "it exists and that its name is spelled correctly."},
    {3079, "The specified field '|' could refer to more than one table listed in the FROM clause "
           "of your SQL statement."},
    {3085, "Undefined function '|' in expression."},
    {3086, "Could not delete from specified tables."},
    {3088, "Too many expressions in ORDER BY clause."},
    {3090, "Resultant table not allowed to have more than one AutoNumber field."},
    {3093, "ORDER BY clause (|) conflicts with DISTINCT."},
    {3095, "Cannot have aggregate function in expression (|)."},
    {3096, "Cannot have aggregate function in WHERE clause (|)."},
    {3097, "Cannot have aggregate function in ORDER BY clause (|)."},
    {3101, "The Microsoft Jet database engine cannot find a record in the table '|2' with key "
           "matching field(s) '|1'."},
    {3103, "Circular reference caused by alias '|' in query definition's SELECT list."},
    {3106, "Missing destination field name in UPDATE statement (|)."},
    {3107, "Record(s) cannot be added; no insert permission on '|'."},
    {3108, "Record(s) cannot be edited; no update permission on '|'."},
    {3109, "Record(s) cannot be deleted; no delete permission on '|'."},
    {3110, "Could not read definitions; no read definitions permission for table or query '|'."},
    {3111, "Could not create; no modify design permission for table or query '|'."},
    {3112, "Record(s) cannot be read; no read permission on '|'."},
    {3113, "Cannot update '|'; field not updatable."},
    {3117, "Cannot sort on Memo or OLE Object (|)."},
    {3122, "You tried to execute a query that does not include the specified expression '|' as "
           "part of an aggregate function."},
    {3125, "'|' is not a valid name.  Make sure that it does not include invalid characters or "
           "punctuation and that it is not too long."},
    {3126, "Invalid bracketing of name '|'."},
    {3127, "The INSERT INTO statement contains the following unknown field name: '|'.  Make sure "
           "you have typed the name correctly, and try the operation again."},
    {3128, "Specify the table containing the records you want to delete."},
    {3129,
     "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'."},
    {3130, "Syntax error in DELETE statement."},
    {3131, "Syntax error in FROM clause."},
    {3134, "Syntax error in INSERT INTO statement."},
    {3137, "Missing semicolon (;) at end of SQL statement."},
    {3138, "Syntax error in ORDER BY clause."},
    {3139, "Syntax error in PARAMETER clause."},
    {3141, "The SELECT statement includes a reserved word or an argument name that is misspelled "
           "or missing, or the punctuation is incorrect."},
    {3142, "Characters found after end of SQL statement."},
    {3144, "Syntax error in UPDATE statement."},
    {3145, "Syntax error in WHERE clause."},
    {3158, "Could not save record; currently locked by another user."},
    {3159, "Not a valid bookmark."},
    {3162, "You tried to assign the Null value to a variable that is not a Variant data type."},
    {3163, "The field is too small to accept the amount of data you attempted to add.  Try "
           "inserting or pasting less data."},
    {3164, "Field cannot be updated."},
    {3167, "Record is deleted."},
    {3169, "The Microsoft Jet database engine could not execute the SQL statement because it "
           "contains a field that has an invalid data type."},
    {3170, "Could not find installable ISAM."},
    {3183, "Not enough space on temporary disk."},
    {3186, "Could not save; currently locked by user '|2' on machine '|1'."},
    {3187, "Could not read; currently locked by user '|2' on machine '|1'."},
    {3188, "Could not update; currently locked by another session on this machine."},
    {3189, "Table '|1' is exclusively locked by user '|3' on machine '|2'."},
    {3190, "Too many fields defined."},
    {3191, "Cannot define field more than once."},
    {3192, "Could not find output table '|'."},
    {3196, "The database '|' is already in use by another person or process.  When the database is "
           "available, try the operation again."},
    {3197, "The Microsoft Jet database engine stopped the process because you and another user are "
           "attempting to change the same data at the same time."},
    {3200, "The record cannot be deleted or changed because table '|' includes related records."},
    {3201, "You cannot add or change a record because a related record is required in table '|'."},
    {3202, "Could not save; currently locked by another user."},
    {3204, "Database already exists."},
    {3211, "The database engine could not lock table '|' because it is already in use by another "
           "person or process."},
    {3212, "Could not lock table '|1'; currently in use by user '|3' on machine '|2'."},
    {3218, "Could not update; currently locked."},
    {3219, "Invalid operation."},
    {3239, "Too many active users."},
    {3246, "Operation not supported in transactions."},
    {3251, "Operation is not supported for this type of object."},
    {3259, "Invalid field data type."},
    {3260, "Could not update; currently locked by user '|2' on machine '|1'."},
    {3261, "Table '|' is exclusively locked by user '|' on machine '|'."},
    {3262, "Could not lock table '|1'; currently in use by user '|3' on machine '|2'."},
    {3263, "Invalid Database object."},
    {3264, "No field defined--cannot append TableDef or Index."},
    {3265, "Item not found in this collection."},
    {3266, "Cannot append a Field that is already a part of a Fields collection."},
    {3267,
     "Property can be set only when the Field is part of a Recordset object's Fields collection."},
    {3268, "Cannot set this property once the object is part of a collection."},
    {3270, "Property not found."},
    {3271, "Invalid property value."},
    {3273, "Method not applicable for this object."},
    {3282, "Operation not supported on a table that contains data."},
    {3283, "Primary key already exists."},
    {3284, "Index already exists."},
    {3311, "Property specified already exists."},
    {3314, "The field '|' cannot contain a Null value because the Required property for this field "
           "is set to True.  Enter a value in this field."},
    {3315, "Field '|' cannot be a zero-length string."},
    {3316, "|"},
    {3317, "One or more values are prohibited by the validation rule '|2' set for '|1'.  Enter a "
           "value that the expression for this field can accept."},
    {3320, "| in table-level validation expression."},
    {3326, "This Recordset is not updatable."},
    {3327, "Field '|' is based on an expression and cannot be edited."},
    {3343, "Unrecognized database format '|'."},
    {3344, "The database engine does not recognize either the field '|1' in a validation "
           "expression, or the default value in the table '|2'."},
    {3345, "Unknown or invalid field reference '|'."},
    {3346, "Number of query values and destination fields are not the same."},
    {3349, "Numeric field overflow."},
    {3350, "Object is invalid for operation."},
    {3351, "The ORDER BY expression (|) includes fields that are not selected by the query.  Only "
           "those fields requested in the first query can be included in an ORDER BY expression."},
    {3352, "No destination field name in INSERT INTO statement (|)."},
    {3355, "Syntax error in default value."},
    {3356, "You attempted to open a database that is already opened exclusively by user '|2' on "
           "machine '|1'.  Try again when the database is available."},
    {3360, "Query is too complex."},
    {3367, "Cannot append.  An object with that name already exists in the collection."},
    {3370, "Cannot modify the design of table '|'.  It is in a read-only database."},
    {3371, "Cannot find table or constraint."},
    {3376, "Table '|' does not exist."},
    {3380, "Field '|2' already exists in table '|1'."},
    {3381, "There is no field named '|2' in table '|1'."},
    {3388, "Unknown function '|2' in validation expression or default value on '|1'."},
    {3406, "The expression you are trying to use for the DefaultValue property is invalid because "
           "'|'.  Use a valid expression to set this property."},
    {3420, "Object invalid or no longer set."},
    {3421, "Data type conversion error."},
    {3422, "Cannot modify table structure.  Another user has the table open."},
    {3425, "This method or property is not currently available on this Recordset."},
    {3426, "This action was cancelled by an associated object."},
    {3428, "A problem occurred in your database.  Correct the problem by repairing and compacting "
           "the database."},
    {3450, "Syntax error in query.  Incomplete query clause."},
    {3464, "Data type mismatch in criteria expression."},
    {3615, "Type mismatch in JOIN expression."},
    {3624, "Could not read the record; currently locked by another user."},
    {3704, "You attempted to open a database that is already opened by user '|2' on machine '|1'.  "
           "Try again when the database is available."},
    {3709, "The search key was not found in any record."},
    {3733, "The database has been placed in a state by an unknown user that prevents it from being "
           "opened or locked."},
    {3734, "The database has been placed in a state by user '|2' on machine '|1' that prevents it "
           "from being opened or locked."},
    {3751, "Requested row locking, but DB is in page lock mode."},
    {3752, "Requested page locking, but DB is in row lock mode."},
    {31001, "Out of memory"},
    {31036, "Error saving to file"},
    {31037, "Error loading from file"},
    {32755, "Cancel was selected."},
});

constexpr bool ByNumber(const CatalogueEntry& left, const CatalogueEntry& right)
{
    return left.number < right.number;
}
static_assert(std::is_sorted(kCatalogue.begin(), kCatalogue.end(), ByNumber));

constexpr std::string_view kUnknown = "Application-defined or object-defined error";

std::string_view TextOf(int number)
{
    const auto* const entry = std::lower_bound(kCatalogue.begin(), kCatalogue.end(),
                                               CatalogueEntry{number, {}}, ByNumber);
    return entry != kCatalogue.end() && entry->number == number ? entry->text : kUnknown;
}

}  // namespace

std::string ErrorText(int number, const std::vector<std::string>& marks)
{
    const std::string_view text = TextOf(number);
    std::string result;
    std::size_t unnumbered = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '|') {
            result += text[at];
            continue;
        }
        const bool numbered = at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '3';
        const std::size_t mark =
            numbered ? static_cast<std::size_t>(text[++at] - '1') : unnumbered++;
        if (mark < marks.size()) result += marks[mark];
    }
    return result;
}

}  // namespace base
