// Applies a macro to each parenthesised entry of a list: QUILL1XML_FOR_EACH(M, (a, b), (c)) is M(a, b) M(c).
#pragma once

#define QUILL1XML_EMPTY_PARENTHESES ()
#define QUILL1XML_RESCAN(...) QUILL1XML_RESCAN_4(QUILL1XML_RESCAN_4(__VA_ARGS__))
#define QUILL1XML_RESCAN_4(...) \
    QUILL1XML_RESCAN_3(QUILL1XML_RESCAN_3(QUILL1XML_RESCAN_3(QUILL1XML_RESCAN_3(__VA_ARGS__))))
#define QUILL1XML_RESCAN_3(...) \
    QUILL1XML_RESCAN_2(QUILL1XML_RESCAN_2(QUILL1XML_RESCAN_2(QUILL1XML_RESCAN_2(__VA_ARGS__))))
#define QUILL1XML_RESCAN_2(...) \
    QUILL1XML_RESCAN_1(QUILL1XML_RESCAN_1(QUILL1XML_RESCAN_1(QUILL1XML_RESCAN_1(__VA_ARGS__))))
#define QUILL1XML_RESCAN_1(...) __VA_ARGS__

#define QUILL1XML_FOR_EACH(macro, ...) __VA_OPT__(QUILL1XML_RESCAN(QUILL1XML_FOR_EACH_STEP(macro, __VA_ARGS__)))
#define QUILL1XML_FOR_EACH_STEP(macro, entry, ...) \
    macro entry __VA_OPT__(QUILL1XML_FOR_EACH_AGAIN QUILL1XML_EMPTY_PARENTHESES(macro, __VA_ARGS__))
#define QUILL1XML_FOR_EACH_AGAIN() QUILL1XML_FOR_EACH_STEP

// Numbered parameters: QUILL1XML_1_TO_3(Double, dblPrice, -1) is (Double, dblPrice1, -1), (Double, dblPrice2, -1), ...
#define QUILL1XML_1_TO_3(type, name, ...) \
    (type, name##1, __VA_ARGS__), (type, name##2, __VA_ARGS__), (type, name##3, __VA_ARGS__)
#define QUILL1XML_1_TO_4(type, name, ...) QUILL1XML_1_TO_3(type, name, __VA_ARGS__), (type, name##4, __VA_ARGS__)
#define QUILL1XML_4_TO_7(type, name, ...)                                                     \
    (type, name##4, __VA_ARGS__), (type, name##5, __VA_ARGS__), (type, name##6, __VA_ARGS__), \
        (type, name##7, __VA_ARGS__)
#define QUILL1XML_8_TO_10(type, name, ...) \
    (type, name##8, __VA_ARGS__), (type, name##9, __VA_ARGS__), (type, name##10, __VA_ARGS__)
#define QUILL1XML_11_TO_15(type, name, ...)                                                      \
    (type, name##11, __VA_ARGS__), (type, name##12, __VA_ARGS__), (type, name##13, __VA_ARGS__), \
        (type, name##14, __VA_ARGS__), (type, name##15, __VA_ARGS__)
#define QUILL1XML_16_TO_20(type, name, ...)                                                      \
    (type, name##16, __VA_ARGS__), (type, name##17, __VA_ARGS__), (type, name##18, __VA_ARGS__), \
        (type, name##19, __VA_ARGS__), (type, name##20, __VA_ARGS__)
#define QUILL1XML_1_TO_7(type, name, ...) \
    QUILL1XML_1_TO_3(type, name, __VA_ARGS__), QUILL1XML_4_TO_7(type, name, __VA_ARGS__)
#define QUILL1XML_1_TO_10(type, name, ...) \
    QUILL1XML_1_TO_7(type, name, __VA_ARGS__), QUILL1XML_8_TO_10(type, name, __VA_ARGS__)
#define QUILL1XML_1_TO_15(type, name, ...) \
    QUILL1XML_1_TO_10(type, name, __VA_ARGS__), QUILL1XML_11_TO_15(type, name, __VA_ARGS__)
#define QUILL1XML_4_TO_20(type, name, ...)                                                 \
    QUILL1XML_4_TO_7(type, name, __VA_ARGS__), QUILL1XML_8_TO_10(type, name, __VA_ARGS__), \
        QUILL1XML_11_TO_15(type, name, __VA_ARGS__), QUILL1XML_16_TO_20(type, name, __VA_ARGS__)
#define QUILL1XML_1_TO_20(type, name, ...) \
    QUILL1XML_1_TO_3(type, name, __VA_ARGS__), QUILL1XML_4_TO_20(type, name, __VA_ARGS__)

// Numbered pairs in turn: (Text, strCaption1, u""), (Text, strDataType1, u""), (Text, strCaption2, u""), ...
#define QUILL1XML_PAIR(n, type, one, two, ...) (type, one##n, __VA_ARGS__), (type, two##n, __VA_ARGS__)
#define QUILL1XML_PAIRS_1_TO_15(...)                                                                       \
    QUILL1XML_PAIR(1, __VA_ARGS__), QUILL1XML_PAIR(2, __VA_ARGS__), QUILL1XML_PAIR(3, __VA_ARGS__),        \
        QUILL1XML_PAIR(4, __VA_ARGS__), QUILL1XML_PAIR(5, __VA_ARGS__), QUILL1XML_PAIR(6, __VA_ARGS__),    \
        QUILL1XML_PAIR(7, __VA_ARGS__), QUILL1XML_PAIR(8, __VA_ARGS__), QUILL1XML_PAIR(9, __VA_ARGS__),    \
        QUILL1XML_PAIR(10, __VA_ARGS__), QUILL1XML_PAIR(11, __VA_ARGS__), QUILL1XML_PAIR(12, __VA_ARGS__), \
        QUILL1XML_PAIR(13, __VA_ARGS__), QUILL1XML_PAIR(14, __VA_ARGS__), QUILL1XML_PAIR(15, __VA_ARGS__)
