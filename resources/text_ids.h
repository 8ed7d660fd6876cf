// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// The numbers of all texts, for the string tables and for the code: plain numbers only, because the
// resource compiler reads this file, too. A number is that of the English text; each further
// language stands one block higher.
#define TEXT_BLOCK 1000
#define HUNGARIAN(text) ((text) + 1 * TEXT_BLOCK)
#define GERMAN(text) ((text) + 2 * TEXT_BLOCK)
#define ITALIAN(text) ((text) + 3 * TEXT_BLOCK)
#define FRENCH(text) ((text) + 4 * TEXT_BLOCK)
#define DUTCH(text) ((text) + 5 * TEXT_BLOCK)

// Headings of the tables, never shown to the user.
#define TEXT_HEADING_LANGUAGE 198
#define TEXT_HEADING_TECHNICIAN 300
#define TEXT_HEADING_MODEM 400
#define TEXT_HEADING_ACCESS 500
#define TEXT_HEADING_PASSWORD 600
#define TEXT_HEADING_REFUSAL 1100

// Words for buttons and messages: the numbers of pvStringTypes.
#define TEXT_OK 200
#define TEXT_CANCEL 201
#define TEXT_ABORT 202
#define TEXT_RETRY 203
#define TEXT_IGNORE 204
#define TEXT_YES 205
#define TEXT_NO 206
#define TEXT_ERROR 207
#define TEXT_UNTITLED 208
#define TEXT_REFRESH 209
#define TEXT_DELETE 210
#define TEXT_FINISH 211
#define TEXT_NEXT 212
#define TEXT_BACK 213
#define TEXT_BROWSE 214
#define TEXT_APPLY 215
#define TEXT_ENABLE 216
#define TEXT_DISABLE 217
#define TEXT_CLOSE 218
#define TEXT_MODIFY 219

// The prompt for the technician who changes an item.
#define TEXT_TECHNICIAN_TITLE 301
#define TEXT_TECHNICIAN_PROMPT 302
#define TEXT_TECHNICIAN_NAME 303
#define TEXT_TECHNICIAN_COMMENTS 304

// The columns of the history file, in their order, and the comment of a condition.
#define TEXT_COLUMN_DATE 310
#define TEXT_COLUMN_TIME 311
#define TEXT_COLUMN_SIGNATURE 312
#define TEXT_COLUMN_TXM_TYPE 313
#define TEXT_COLUMN_TXM_CA 314
#define TEXT_COLUMN_TXM_NAME 315
#define TEXT_COLUMN_ITEM_ID 316
#define TEXT_COLUMN_ITEM_NAME 317
#define TEXT_COLUMN_NEW_VALUE 318
#define TEXT_COLUMN_UNIT 319
#define TEXT_COLUMN_COMMENTS 320
#define TEXT_CONDITIONS 321

// The question for a modem connection, and the names of ports.
#define TEXT_MODEM_QUESTION 401
#define TEXT_WARNING 402
#define TEXT_PORT_NAME 403
#define TEXT_MODEM_NAME 404

// The access editor. Dutch has its labels at numbers of their own, which the editor does not ask
// for.
#define TEXT_ACCESS_TITLE 501
#define TEXT_ACCESS_DUTCH_READ 502
#define TEXT_ACCESS_DUTCH_WRITE 503
#define TEXT_ACCESS_DUTCH_UPDATE 504
#define TEXT_ACCESS_DUTCH_MASK 505
#define TEXT_ACCESS_READ 510
#define TEXT_ACCESS_WRITE 511
#define TEXT_ACCESS_UPDATE 512
#define TEXT_ACCESS_MASK 513
#define TEXT_ACCESS_ALWAYS 520
#define TEXT_ACCESS_WITH_PW1 521
#define TEXT_ACCESS_WITH_PW2 522
#define TEXT_ACCESS_WITH_PW3 523
#define TEXT_ACCESS_WITH_PW4 524

// The password dialog.
#define TEXT_PASSWORD_TITLE 601
#define TEXT_PASSWORD_ENTER 602
#define TEXT_PASSWORD_NEW 603
#define TEXT_PASSWORD_REPEAT 604
#define TEXT_PASSWORD_INCORRECT 610
#define TEXT_PASSWORD_REPEAT_NEW 611

// Items that a password protects.
#define TEXT_WRITE_PROTECTED 1101
#define TEXT_NECESSARY_LEVEL 1102
#define TEXT_READ_PROTECTED 1103

// The symbol editor. From the first number on, texts are labels: resources of a type of our own.
#define TEXT_FIRST_LABEL 7001
#define TEXT_SYMBOL_TITLE 7001
#define TEXT_SYMBOL_PENCIL 7010
#define TEXT_SYMBOL_LINE 7011
#define TEXT_SYMBOL_RECTANGLE 7012
#define TEXT_SYMBOL_FILL 7013
#define TEXT_SYMBOL_ERASER 7014
#define TEXT_SYMBOL_UNDO 7020
#define TEXT_SYMBOL_CLEAR 7021
#define TEXT_SYMBOL_MIRROR_ACROSS 7022
#define TEXT_SYMBOL_MIRROR_UPRIGHT 7023
#define TEXT_SYMBOL_DRAWING 7030
#define TEXT_SYMBOL_COLORS 7031
#define TEXT_SYMBOL_PREVIEW 7032
#define TEXT_SYMBOL_FOREIGN 7033
#define TEXT_SYMBOL_DISCARD 7034
