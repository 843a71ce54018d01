// How strong the levels are, in words: they lie a hundred rating points or more apart, as
// docs/levels.md tells.

export const LEVELS = [
    {level: 100, word: 'Beginner'},
    {level: 300, word: 'Casual'},
    {level: 700, word: 'Fair'},
    {level: 1500, word: 'Strong'},
    {level: 5000, word: 'Very strong'},
    {level: 500000, word: 'As strong as it gets'},
];

// The word for a level, or its number.
export function wordOf(level) {
    const found = LEVELS.find(one => one.level === level);
    return found ? found.word.toLowerCase() : `level ${level}`;
}
